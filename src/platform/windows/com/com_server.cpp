#include "platform/windows/com/com_server.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/windows/com/weather_object.h"
#include "platform/windows/com/weather_registration.h"
#include "platform/windows/handle.h"
#include "platform/windows/windows_error.h"

namespace orvalis {
namespace {

/// This event exists while a program offers its class; it is never set.
constexpr const wchar_t* kOfferName = L"Local\\Orvalis.Weather.offered";

}  // namespace

bool ClassIsOffered() { return static_cast<bool>(Handle(OpenEventW(SYNCHRONIZE, FALSE, kOfferName))); }

/// The class object. A client's reference may keep it alive after the server; it then creates nothing.
class ComServer::Factory final : public IClassFactory {
 public:
  Factory(Parts parts, ITypeInfo* type) : parts_(std::move(parts)), type_(type) {}
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;

  HRESULT Offer() {
    // Suspended first: no client's call may arrive before the registration is stored here.
    const HRESULT result = CoRegisterClassObject(CLSID_Weather, this, CLSCTX_LOCAL_SERVER,
                                                 REGCLS_MULTIPLEUSE | REGCLS_SUSPENDED, &registration_);
    if (FAILED(result)) return result;
    offered_ = true;
    mark_ = Handle(CreateEventW(nullptr, TRUE, FALSE, kOfferName));
    return CoResumeClassObjects();
  }

  void Withdraw() {
    if (!std::exchange(offered_, false)) return;
    CoRevokeClassObject(registration_);
    mark_ = {};
  }

  /// The program is ending; clients may still hold objects.
  void Close() {
    Withdraw();
    closed_ = true;
    for (WeatherObject* const object : objects_) object->Detach();
  }

  [[nodiscard]] bool had_clients() const { return had_clients_; }

  STDMETHODIMP QueryInterface(REFIID interface_id, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = interface_id == IID_IUnknown || interface_id == IID_IClassFactory;
    *object = known ? static_cast<IClassFactory*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID interface_id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    if (closed_) return CO_E_SERVER_STOPPING;
    std::unique_ptr<Weather> weather;
    try {
      weather = parts_.create();
    } catch (const std::exception&) {
      return E_OUTOFMEMORY;  // the limit of clients has been reached
    }
    had_clients_ = true;
    AddRef();
    auto* const made = new WeatherObject(
        {.weather = std::move(weather), .type = type_, .released = [this](WeatherObject* object) { Forget(object); }});
    objects_.push_back(made);
    const HRESULT result = made->QueryInterface(interface_id, object);
    made->Release();
    return result;
  }

  /// A client that holds only the class also keeps the program in use.
  STDMETHODIMP LockServer(BOOL lock) override {
    if (lock != FALSE) had_clients_ = true;
    return S_OK;
  }

 private:
  ~Factory() { type_->Release(); }

  void Forget(WeatherObject* object) {
    std::erase(objects_, object);
    // The program is ending with its last client: a new client starts a new program, and one that already holds
    // the class gets an error.
    if (objects_.empty() && parts_.ends_with_last_client) {
      Withdraw();
      closed_ = true;
    }
    Release();
  }

  Parts parts_;
  ITypeInfo* type_;
  DWORD registration_ = 0;
  Handle mark_;  ///< see kOfferName
  ULONG references_ = 1;
  std::vector<WeatherObject*> objects_;  ///< owned by their clients
  bool offered_ = false;
  bool closed_ = false;
  bool had_clients_ = false;
};

ComServer::ComServer(Parts parts) : parts_(std::move(parts)) {}

ComServer::~ComServer() {
  if (factory_ == nullptr) return;
  factory_->Close();
  factory_->Release();
}

bool ComServer::Start() {
  try {
    factory_ = new Factory(parts_, LoadWeatherType());
    CheckCom("the class cannot be offered", factory_->Offer());
    return true;
  } catch (const RunTimeError& error) {
    parts_.record(std::string("clients cannot use the COM interface: ") + error.what());
    return false;
  }
}

bool ComServer::had_clients() const { return factory_ != nullptr && factory_->had_clients(); }

}  // namespace orvalis
