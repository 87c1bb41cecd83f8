#pragma once

#include <windows.h>

// Behind the types of windows.h.
#include <oleauto.h>

#include <atomic>
#include <cstdlib>
#include <iostream>

namespace orvalis::test {

/// An object of the automation system that has one interface. It begins with one reference, its maker's.
template <typename Interface>
class ComObject : public Interface {
 public:
  virtual ~ComObject() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == __uuidof(Interface);
    *object = known ? static_cast<Interface*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 private:
  std::atomic<ULONG> references_ = 1;
};

/// One without type information, as objects are that are called by name only.
class NamedCalls : public ComObject<IDispatch> {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
};

/// Makes objects with `make`, which gives a new one with one reference.
class ComFactory : public ComObject<IClassFactory> {
 public:
  explicit ComFactory(IDispatch* (*make)()) : make_(make) {}
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
    IDispatch* const made = make_();
    const HRESULT result = made->QueryInterface(id, object);
    made->Release();
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  IDispatch* (*make_)();
};

/// A new object of another program, or this program's end.
template <typename Interface>
Interface* CreateElsewhere(REFCLSID class_id) {
  void* object = nullptr;
  const HRESULT result = CoCreateInstance(class_id, nullptr, CLSCTX_LOCAL_SERVER, __uuidof(Interface), &object);
  if (SUCCEEDED(result)) return static_cast<Interface*>(object);
  std::cout << "no object: " << std::hex << result << std::endl;
  std::exit(1);
}

}  // namespace orvalis::test
