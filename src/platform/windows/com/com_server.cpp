#include "platform/windows/com/com_server.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/automation_object.h"
#include "platform/windows/com/observation_object.h"
#include "platform/windows/com/weather_object.h"
#include "platform/windows/com/weather_registration.h"
#include "platform/windows/handle.h"
#include "platform/windows/windows_error.h"

namespace orvalis {
namespace {

/// A program has this event while its classes are on offer; it is never set.
constexpr const wchar_t* kOfferName = L"Local\\Orvalis.Weather.offered";

/// A class and how its objects are made.
struct ServedClass {
  const CLSID& class_id;
  const IID& interface_id;
  IDispatch* (*make)(ClientObjectParts parts, const ObservationReader& reader);
};
const std::array kClasses = {
    ServedClass{CLSID_Weather, IID_IWeather,
                [](ClientObjectParts parts, const ObservationReader& /*reader*/) -> IDispatch* {
                  return new WeatherObject(std::move(parts));
                }},
    ServedClass{CLSID_Observation, IID_IObservation,
                [](ClientObjectParts parts, const ObservationReader& reader) -> IDispatch* {
                  return new ObservationObject(std::move(parts), reader);
                }},
};

}  // namespace

bool ClassIsOffered() { return static_cast<bool>(Handle(OpenEventW(SYNCHRONIZE, FALSE, kOfferName))); }

/// What the classes have in common: the objects that are out, and whether there may be more. Their clients count
/// together.
class ComServer::Offer {
 public:
  explicit Offer(Parts parts) : parts_(std::move(parts)) {}
  Offer(const Offer&) = delete;
  Offer& operator=(const Offer&) = delete;
  ~Offer() { Withdraw(); }

  void Make(const std::vector<Factory*>& factories);

  /// The program is ending; clients may still hold objects.
  void Close() {
    Withdraw();
    closed_ = true;
    for (ServedObject* const object : objects_) object->Detach();
  }

  void NoteClient() { had_clients_ = true; }
  [[nodiscard]] bool had_clients() const { return had_clients_; }
  [[nodiscard]] bool closed() const { return closed_; }
  [[nodiscard]] const Parts& parts() const { return parts_; }

  void Add(ServedObject* object) { objects_.push_back(object); }
  void Forget(ServedObject* object) {
    std::erase(objects_, object);
    // The program is about to end with its last client: a new client gets a new program, and one that
    // already holds a class gets an error.
    if (objects_.empty() && parts_.ends_with_last_client) {
      Withdraw();
      closed_ = true;
    }
  }

 private:
  void Withdraw() {
    for (const DWORD registration : std::exchange(registrations_, {})) CoRevokeClassObject(registration);
    mark_ = {};
  }

  Parts parts_;
  std::vector<DWORD> registrations_;
  Handle mark_;                         ///< see kOfferName
  std::vector<ServedObject*> objects_;  ///< owned by their clients
  bool closed_ = false;
  bool had_clients_ = false;
};

/// A class object. It outlives the server while a client still has a reference to it, and then makes nothing.
class ComServer::Factory final : public IClassFactory {
 public:
  Factory(std::shared_ptr<Offer> offer, const ServedClass& served)
      : offer_(std::move(offer)), served_(served), type_(LoadType(served.interface_id)) {}
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;

  [[nodiscard]] const CLSID& class_id() const { return served_.class_id; }

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
    if (offer_->closed()) return CO_E_SERVER_STOPPING;
    std::unique_ptr<Weather> weather;
    try {
      static std::uint64_t clients = 0;
      weather = offer_->parts().create("COM " + std::to_string(++clients));
    } catch (const std::exception&) {
      return E_OUTOFMEMORY;  // the limit of clients has been reached
    }
    offer_->NoteClient();
    AddRef();
    IDispatch* const made = served_.make({.weather = std::move(weather),
                                          .type = type_.get(),
                                          .made = [this](ServedObject* object) { offer_->Add(object); },
                                          .released =
                                              [this](ServedObject* object) {
                                                offer_->Forget(object);
                                                Release();
                                              }},
                                         offer_->parts().observation);
    const HRESULT result = made->QueryInterface(interface_id, object);
    made->Release();
    return result;
  }

  /// A client that holds only the class also keeps the program in use.
  STDMETHODIMP LockServer(BOOL lock) override {
    if (lock != FALSE) offer_->NoteClient();
    return S_OK;
  }

 private:
  ~Factory() = default;

  std::shared_ptr<Offer> offer_;
  const ServedClass& served_;
  ComPtr<ITypeInfo> type_;
  ULONG references_ = 1;
};

void ComServer::Offer::Make(const std::vector<Factory*>& factories) {
  // Suspended first: no client's call comes before the registrations are known here.
  for (Factory* const factory : factories) {
    DWORD registration = 0;
    CheckCom("a class cannot be offered", CoRegisterClassObject(factory->class_id(), factory, CLSCTX_LOCAL_SERVER,
                                                                REGCLS_MULTIPLEUSE | REGCLS_SUSPENDED, &registration));
    registrations_.push_back(registration);
  }
  mark_ = Handle(CreateEventW(nullptr, TRUE, FALSE, kOfferName));
  CheckCom("the classes cannot be offered", CoResumeClassObjects());
}

ComServer::ComServer(Parts parts) : parts_(std::move(parts)) {}

ComServer::~ComServer() {
  if (offer_) offer_->Close();
}

bool ComServer::Start() {
  try {
    offer_ = std::make_shared<Offer>(parts_);
    std::vector<ComPtr<Factory>> factories;
    std::vector<Factory*> offered;
    for (const ServedClass& served : kClasses) {
      factories.emplace_back(new Factory(offer_, served));
      offered.push_back(factories.back().get());
    }
    offer_->Make(offered);
    return true;
  } catch (const RunTimeError& error) {
    parts_.record(std::string("clients cannot use the COM interface: ") + error.what());
    return false;
  }
}

bool ComServer::had_clients() const { return offer_ && offer_->had_clients(); }

}  // namespace orvalis
