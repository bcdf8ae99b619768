#pragma once

#include <exception>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

// Runs the action and expects it to throw exactly the class Expected (not a subclass) with
// exactly these words.
template <typename Expected, typename Action>
void expectFailure(Action action, const std::string& words) {
    try {
        action();
    } catch (const std::exception& failure) {
        EXPECT_EQ(std::string(typeid(failure).name()), std::string(typeid(Expected).name()));
        EXPECT_EQ(std::string(failure.what()), words);
        return;
    }
    ADD_FAILURE() << "nothing was thrown, expected: " << words;
}
