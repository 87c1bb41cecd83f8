#pragma once

#include <windows.h>

// After windows.h, whose types they use.
#include <oleauto.h>

#include <exception>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "server/weather.h"

namespace orvalis {

/// A text as the automation system has it; the caller's.
[[nodiscard]] BSTR ToBstr(std::string_view text);
/// The number that the client gets for what a member threw. The text is left where the client's side of the call looks
/// for it, as said by `interface_id`.
[[nodiscard]] HRESULT ResultOf(const std::exception_ptr& error, const IID& interface_id);

/// An object of one client, as the server that made it sees it.
class ServedObject {
 public:
  virtual ~ServedObject() = default;
  /// The program ends: whatever the client asks from now on is answered with the system's error for that.
  virtual void Detach() = 0;
};

/// What an object of a client is made of.
struct ClientObjectParts {
  std::unique_ptr<Weather> weather;
  ITypeInfo* type;  ///< of its interface; the object takes a reference of its own
  std::function<void(ServedObject*)> made;
  /// Called when the last reference is gone, before `weather` is.
  std::function<void(ServedObject*)> released;
};

/// One client's object: early bound, late bound, and with errors that either can read. It lives in the one thread's
/// apartment, and counts as a client by the `Weather` that it holds.
template <typename Interface>
class ClientObject : public Interface, public ISupportErrorInfo, public ServedObject {
 public:
  /// With one reference, which is the caller's.
  explicit ClientObject(ClientObjectParts parts) : parts_(std::move(parts)) {
    parts_.type->AddRef();
    parts_.made(this);
  }
  ClientObject(const ClientObject&) = delete;
  ClientObject& operator=(const ClientObject&) = delete;

  void Detach() override { parts_.weather.reset(); }

  STDMETHODIMP QueryInterface(REFIID interface_id, void** object) override {
    if (object == nullptr) return E_POINTER;
    if (interface_id == IID_IUnknown || interface_id == IID_IDispatch || interface_id == __uuidof(Interface)) {
      *object = static_cast<Interface*>(this);
    } else if (interface_id == IID_ISupportErrorInfo) {
      *object = static_cast<ISupportErrorInfo*>(this);
    } else {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** type) override {
    if (type == nullptr) return E_POINTER;
    *type = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    parts_.type->AddRef();
    *type = parts_.type;
    return S_OK;
  }
  STDMETHODIMP GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* ids) override {
    return DispGetIDsOfNames(parts_.type, names, count, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID /*locale*/, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrong_argument) override {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (arguments == nullptr) return E_INVALIDARG;
    // Not every system counts them.
    const bool is_put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (arguments->cArgs != (is_put ? 1U : ArgumentsOf(id))) return DISP_E_BADPARAMCOUNT;
    SetErrorInfo(0, nullptr);  // an error that stands from another call must not become this one's
    return DispInvoke(static_cast<Interface*>(this), parts_.type, id, flags, arguments, result, exception,
                      wrong_argument);
  }

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID interface_id) override {
    return interface_id == __uuidof(Interface) ? S_OK : S_FALSE;
  }

 protected:
  ~ClientObject() override {
    parts_.released(this);
    parts_.type->Release();
  }

  /// How many arguments the method or the reading of a property takes.
  [[nodiscard]] virtual UINT ArgumentsOf(DISPID /*id*/) const { return 0; }
  /// Null once the program ends.
  [[nodiscard]] Weather* weather() const { return parts_.weather.get(); }
  [[nodiscard]] static HRESULT Failed(const std::exception_ptr& error) { return ResultOf(error, __uuidof(Interface)); }

 private:
  ClientObjectParts parts_;
  ULONG references_ = 1;
};

}  // namespace orvalis
