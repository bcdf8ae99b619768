#pragma once

#include <mutex>
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
    ComPtr(ComPtr&& other) noexcept : pointer_(other.pointer_) { other.pointer_ = nullptr; }
    ComPtr& operator=(ComPtr&& other) noexcept {
        if (this != &other) {
            reset();
            pointer_ = other.pointer_;
            other.pointer_ = nullptr;
        }
        return *this;
    }

    Interface* get() const { return pointer_; }
    Interface* operator->() const { return pointer_; }
    // For an out argument: the old reference is released first.
    Interface** out() {
        reset();
        return &pointer_;
    }
    void reset() {
        if (pointer_ != nullptr) {
            pointer_->Release();
            pointer_ = nullptr;
        }
    }

private:
    Interface* pointer_ = nullptr;
};

// A COM string that is freed when it goes. Raises std::runtime_error with the decimal code of
// E_OUTOFMEMORY when it can't be allocated.
class Bstr {
public:
    explicit Bstr(const wchar_t* text);
    ~Bstr();
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    BSTR get() const { return text_; }

private:
    BSTR text_;
};

// One COM initialisation of the calling thread with a locator and, once connected, the services
// of one namespace. Everything is released in reverse order, COM last. Every failure raises
// detector::InternalError.
//
// One session at a time in the program: the report's sections run side by side, and Wine's
// management provider, which runs inside the program, isn't safe for two queries at once: the
// report crashed the program inside it now and again. A session waits for the one before it to
// end.
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
    // Held from the first step of the session to its last: declared first, let go last.
    std::unique_lock<std::mutex> turn_;
    ComPtr<IWbemLocator> locator_;
    ComPtr<IWbemServices> services_;
};

// The text of a property of the enumerator's next object: an empty text when the property holds
// no text, nothing when the enumerator has no further object or fails.
std::optional<std::wstring> nextObjectText(IEnumWbemClassObject* objects, const wchar_t* property);

} // namespace detector
