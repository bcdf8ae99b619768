#include "diagnostics/wmi_session_windows.h"

#include <stdexcept>
#include <string>

#include "foundation/exceptions.h"

namespace detector {

namespace {

// Accepted answers of the process-wide security set-up: two sessions on two threads both try it.
bool securityIsSet(HRESULT result) {
    return result == S_OK || result == RPC_E_TOO_LATE;
}

void initialiseCom() {
    if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {
        throw InternalError();
    }
    const HRESULT security =
        CoInitializeSecurity(nullptr, -1, nullptr, nullptr, RPC_C_AUTHN_LEVEL_DEFAULT,
                             RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE, nullptr);
    if (!securityIsSet(security)) {
        CoUninitialize();
        throw InternalError();
    }
}

std::mutex& sessionTurn() {
    static std::mutex turn;
    return turn;
}

} // namespace

Bstr::Bstr(const wchar_t* source) : text_(SysAllocString(source)) {
    if (text_ == nullptr) {
        throw std::runtime_error(std::to_string(static_cast<unsigned long>(E_OUTOFMEMORY)));
    }
}

Bstr::~Bstr() {
    SysFreeString(text_);
}

WmiSession::WmiSession() : turn_(sessionTurn()) {
    initialiseCom();
    const HRESULT created =
        CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator,
                         reinterpret_cast<void**>(locator_.out()));
    if (FAILED(created)) {
        CoUninitialize();
        throw InternalError();
    }
}

WmiSession::~WmiSession() {
    services_.reset();
    locator_.reset();
    CoUninitialize();
}

void WmiSession::connect(const wchar_t* space) {
    const Bstr name(space);
    if (FAILED(locator_->ConnectServer(name.get(), nullptr, nullptr, nullptr, 0, nullptr, nullptr,
                                       services_.out()))) {
        throw InternalError();
    }
    if (FAILED(CoSetProxyBlanket(services_.get(), RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                                 RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr,
                                 EOAC_NONE))) {
        throw InternalError();
    }
}

ComPtr<IEnumWbemClassObject> WmiSession::query(const wchar_t* wql) {
    const Bstr language(L"WQL");
    const Bstr text(wql);
    ComPtr<IEnumWbemClassObject> objects;
    if (FAILED(services_->ExecQuery(language.get(), text.get(),
                                    WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr,
                                    objects.out()))) {
        throw InternalError();
    }
    return objects;
}

std::optional<std::wstring> nextObjectText(IEnumWbemClassObject* objects, const wchar_t* property) {
    ComPtr<IWbemClassObject> object;
    ULONG returned = 0;
    // The header's enumerator for "no time-out" doesn't fit the signed argument; it means -1.
    constexpr LONG noTimeout = -1;
    if (FAILED(objects->Next(noTimeout, 1, object.out(), &returned)) || returned == 0) {
        return std::nullopt;
    }
    VARIANT value;
    VariantInit(&value);
    std::wstring text;
    if (SUCCEEDED(object->Get(property, 0, &value, nullptr, nullptr)) && value.vt == VT_BSTR &&
        value.bstrVal != nullptr) {
        text = value.bstrVal;
    }
    VariantClear(&value);
    return text;
}

} // namespace detector
