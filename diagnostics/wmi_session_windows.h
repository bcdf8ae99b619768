#pragma once

#include <optional>
#include <string>

#include <windows.h>

#include <wbemidl.h>

// The management service of Windows (WMI) through COM, for one function on one thread.
namespace detector {

// Holds one reference to a COM interface and releases it when it goes.
template <typename Interface> class ComPtr {
public:
    ComPtr() = default;
    ~ComPtr() { reset(); }
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;
    ComPtr(ComPtr&& other) noexcept : pointer(other.pointer) { other.pointer = nullptr; }
    ComPtr& operator=(ComPtr&& other) noexcept {
        if (this != &other) {
            reset();
            pointer = other.pointer;
            other.pointer = nullptr;
        }
        return *this;
    }

    Interface* get() const { return pointer; }
    Interface* operator->() const { return pointer; }
    // For an out argument: the old reference is released first.
    Interface** out() {
        reset();
        return &pointer;
    }
    void reset() {
        if (pointer != nullptr) {
            pointer->Release();
            pointer = nullptr;
        }
    }

private:
    Interface* pointer = nullptr;
};

// A COM string that is freed when it goes. Raises std::runtime_error with the decimal code of
// E_OUTOFMEMORY when it can't be allocated.
class Bstr {
public:
    explicit Bstr(const wchar_t* text);
    ~Bstr();
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    BSTR get() const { return text; }

private:
    BSTR text;
};

// One COM initialisation of the calling thread with a locator and, once connected, the services
// of one namespace. Everything is released in reverse order, COM last. Every failure raises
// detector::InternalError.
class WmiSession {
public:
    WmiSession();
    ~WmiSession();
    WmiSession(const WmiSession&) = delete;
    WmiSession& operator=(const WmiSession&) = delete;

    // Connects to a namespace such as "ROOT\\CIMV2", replacing an earlier connection.
    void connect(const wchar_t* space);
    // Runs a WQL query, forward only, returning at once.
    ComPtr<IEnumWbemClassObject> query(const wchar_t* wql);

private:
    ComPtr<IWbemLocator> locator;
    ComPtr<IWbemServices> services;
};

// The text of a property of the enumerator's next object: an empty text when the property holds
// no text, nothing when the enumerator has no further object or fails.
std::optional<std::wstring> nextObjectText(IEnumWbemClassObject* objects, const wchar_t* property);

} // namespace detector
