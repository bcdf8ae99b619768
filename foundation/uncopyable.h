#pragma once

// Base of the objects that stand for one thing of the program (the application, the window's
// implementation, the menu): they are shared by reference and never copied.
class Uncopyable {
protected:
    Uncopyable() = default;
    ~Uncopyable() = default;

public:
    Uncopyable(const Uncopyable&) = delete;
    Uncopyable& operator=(const Uncopyable&) = delete;
};
