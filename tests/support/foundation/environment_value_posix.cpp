#include "tests/support/foundation/environment_value.h"

#include <cstdlib>

EnvironmentValue::EnvironmentValue(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) {
        old_ = old;
    }
    value != nullptr ? setenv(name, value, 1) : unsetenv(name);
}

EnvironmentValue::~EnvironmentValue() {
    old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_);
}
