#pragma once

#include <optional>
#include <string>

// Sets or clears an environment variable for one test and puts it back afterwards.
class EnvironmentValue {
public:
    // A null value clears the variable.
    EnvironmentValue(const char* name, const char* value);
    ~EnvironmentValue();
    EnvironmentValue(const EnvironmentValue&) = delete;
    EnvironmentValue& operator=(const EnvironmentValue&) = delete;

private:
    const char* name_;
    std::optional<std::string> old_;
};
