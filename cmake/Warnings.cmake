# Warnings that every target of the project keeps clean.
function(corvanite_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wno-missing-field-initializers)
endfunction()
