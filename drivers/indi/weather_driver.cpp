#include "weather_driver.h"

#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <utility>

namespace orvalis::indi {
namespace {

constexpr std::chrono::seconds kPeriod{2};
constexpr std::size_t kLongestMessage = 240;  // bytes; INDI cuts at 255, wherever that is
constexpr std::size_t kLongestText = 1'000;   // bytes
constexpr double kTimeout = 60;               // s, which clients are told; nothing takes so long

// Names that INDI's clients know.
constexpr const char* kParameters = "WEATHER_PARAMETERS";
constexpr const char* kVerdict = "WEATHER_SAFETY";
constexpr const char* kAddress = "DEVICE_ADDRESS";
constexpr const char* kFollow = "STATION_FOLLOW";

IPState StateOf(bool good) { return good ? IPS_OK : IPS_ALERT; }

bool IsOn(const char* wanted, const ISState* states, char* names[], int n) {
  for (int i = 0; i < n; ++i) {
    if (std::strcmp(names[i], wanted) == 0 && states[i] == ISS_ON) return true;
  }
  return false;
}

/// By who started the server: nohup, or a script that runs it in the background.
bool IsToBeIgnored(int signal) {
  struct sigaction action {};
  return signal != SIGTERM && sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

/// Held back for good: they arrive at the descriptor in their turn.
int StopSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (!IsToBeIgnored(signal)) sigaddset(&set, signal);
  }
  sigprocmask(SIG_BLOCK, &set, nullptr);
  return signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
}

}  // namespace

struct WeatherDriver::Work {
  explicit Work(WeatherDriver& driver)
      : signals(StopSignals()),
        source(
            events,
            [this, &driver](Moment requested, const std::string& body) {
              watch.Take(requested, body);
              driver.StationAnswered();
              driver.Look();
            },
            [this, &driver](const std::string& problem) {
              watch.TakeFailure(problem);
              driver.Look();
            }),
        ask(events, [this] { source.Ask(); }),
        stale(events, [&driver] { driver.Look(); }),
        memory(driver.getDeviceName()),
        watch(memory.Read()) {
    events.Watch(signals.number(), EPOLLIN, [&driver](std::uint32_t) {
      driver.End();
      // A name look-up may be under way, and would crash in libraries that shut down.
      std::_Exit(EXIT_SUCCESS);
    });
  }

  void AskAtOnce() { ask.Start(Now(), kPeriod); }

  EventSet events;
  Descriptor signals;
  ObservationSource source;
  Timer ask;
  Timer stale;  // when what was safe has become too old
  StationMemory memory;
  StationWatch watch;
};

WeatherDriver::WeatherDriver() { setVersion(ORVALIS_VERSION_MAJOR, ORVALIS_VERSION_MINOR); }

WeatherDriver::~WeatherDriver() { End(); }

bool WeatherDriver::initProperties() {
  INDI::DefaultDevice::initProperties();
  setDriverInterface(WEATHER_INTERFACE);
  addConfigurationControl();
  const char* device = getDeviceName();
  status_[0].fill(kVerdict, "Safety", IPS_ALERT);
  status_.fill(device, "WEATHER_STATUS", "Status", MAIN_CONTROL_TAB, IPS_ALERT);
  // Clients of INDI 2.1.7 and later read this one; earlier ones do not mind it.
  safety_[0].fill("SAFETY", "Safety", IPS_ALERT);
  safety_.fill(device, "SAFETY_STATUS", "Safety", MAIN_CONTROL_TAB, IPS_ALERT);
  reasons_[0].fill("REASONS", "Reasons", "");
  reasons_.fill(device, "SAFETY_REASONS", "Reasons", MAIN_CONTROL_TAB, IP_RO, kTimeout, IPS_ALERT);
  station_[0].fill("NAME", "Name", "");
  station_[1].fill("UUID", "UUID", "");
  station_.fill(device, "STATION", "Station", CONNECTION_TAB, IP_RO, kTimeout, IPS_IDLE);
  follow_[0].fill("FOLLOW", "Follow this station", ISS_OFF);
  follow_.fill(device, kFollow, "Another station", CONNECTION_TAB, IP_RW, ISR_ATMOST1, kTimeout, IPS_IDLE);
  address_text_[0].fill("ADDRESS", "Host", "");
  address_text_[1].fill("PORT", "Port", "");
  address_text_.fill(device, kAddress, "Orvalis", CONNECTION_TAB, IP_RW, kTimeout, IPS_OK);
  return true;
}

void WeatherDriver::ISGetProperties(const char* device) {
  INDI::DefaultDevice::ISGetProperties(device);
  if (!isConnected() && isInitializationComplete()) Begin();
}

void WeatherDriver::Begin() {
  // Connected means nothing here but that clients look at it.
  setConnected(true, IPS_OK);
  defineProperty(status_);
  defineProperty(safety_);
  defineProperty(reasons_);
  DefineValues();
  defineProperty(station_);
  defineProperty(follow_);
  ShowAddress(IPS_OK);
  defineProperty(address_text_);
  loadConfig(true, kAddress);
  try {
    work_ = std::make_unique<Work>(*this);
    kept_ = work_->watch.followed();
    work_->source.SetAddress(address_);
    work_->AskAtOnce();
    Look();
  } catch (const std::exception& error) {
    Tell(std::string("Cannot ask Orvalis: ") + error.what());
  }
}

void WeatherDriver::End() {
  if (!work_) return;
  Show({.reasons = {{"ending", "the INDI driver is ending"}}, .values = {}});
  work_.reset();
}

void WeatherDriver::Tell(const std::string& text) {
  IDMessage(getDeviceName(), "%s", Printable(text, kLongestMessage).c_str());
}

// What clients write.

bool WeatherDriver::ISNewText(const char* device, const char* name, char* texts[], char* names[], int n) {
  if (std::strcmp(device, getDeviceName()) != 0 || std::strcmp(name, kAddress) != 0) return false;
  ReadAddress(texts, names, n);
  return true;
}

bool WeatherDriver::ISNewSwitch(const char* device, const char* name, ISState* states, char* names[], int n) {
  if (std::strcmp(device, getDeviceName()) != 0 || loading_) return false;
  if (std::strcmp(name, "CONNECTION") == 0) {
    // Disconnected, the status would vanish from every client, and nothing would close.
    setConnected(true, IPS_OK);
    if (IsOn("DISCONNECT", states, names, n)) {
      Tell("Not disconnected: a roof would no longer hear that it is unsafe. To end it, stop the driver.");
    }
    return true;
  }
  if (std::strcmp(name, kFollow) == 0) {
    if (IsOn("FOLLOW", states, names, n)) Follow();
    return true;
  }
  return std::strcmp(name, "CONFIG_PROCESS") == 0 && INDI::DefaultDevice::ISNewSwitch(device, name, states, names, n);
}

bool WeatherDriver::loadConfig(bool silent, const char* property) {
  const bool before = std::exchange(loading_, true);
  const bool done = INDI::DefaultDevice::loadConfig(silent, property);
  loading_ = before;
  return done;
}

bool WeatherDriver::loadDefaultConfig() {
  const bool before = std::exchange(loading_, true);
  const bool done = INDI::DefaultDevice::loadDefaultConfig();
  loading_ = before;
  return done;
}

bool WeatherDriver::saveConfigItems(FILE* file) {
  address_text_.save(file);
  return true;
}

void WeatherDriver::ReadAddress(char* texts[], char* names[], int n) {
  std::string host = address_.host;
  std::string port = std::to_string(address_.port);
  for (int i = 0; i < n; ++i) {
    if (std::strcmp(names[i], "ADDRESS") == 0) host = texts[i];
    if (std::strcmp(names[i], "PORT") == 0) port = texts[i];
  }
  const std::optional<Address> address = Address::Read(host, port);
  if (!address) {
    ShowAddress(IPS_ALERT);
    address_text_.apply();
    Tell("Not an address: a host name or address and a port from 1 to 65535 are needed.");
    return;
  }
  if (*address != address_) SetAddress(*address);
  ShowAddress(IPS_OK);
  address_text_.apply();
}

void WeatherDriver::SetAddress(const Address& address) {
  address_ = address;
  ShowAddress(IPS_OK);
  if (!loading_) saveConfig(true);
  if (!work_) return;
  // Who writes another address means another station. A file that is loaded may be an old one.
  work_->watch = StationWatch(loading_ ? work_->watch.followed() : "");
  StationAnswered();
  work_->source.SetAddress(address);
  work_->AskAtOnce();
  Look();
}

void WeatherDriver::ShowAddress(IPState state) {
  address_text_[0].setText(address_.host.c_str());
  address_text_[1].setText(std::to_string(address_.port).c_str());
  address_text_.setState(state);
}

void WeatherDriver::Follow() {
  const bool followed = work_ && work_->watch.FollowOther();
  follow_[0].setState(ISS_OFF);
  follow_.setState(followed ? IPS_OK : IPS_IDLE);
  follow_.apply();
  if (!followed) {
    Tell("There is no other station to follow.");
    return;
  }
  StationAnswered();
  work_->AskAtOnce();
}

// What clients are shown.

void WeatherDriver::StationAnswered() {
  const StationWatch& watch = work_->watch;
  if (watch.followed() != kept_) {
    kept_ = watch.followed();
    const std::string problem = work_->memory.Write(kept_);
    if (!problem.empty()) Tell("Which station is followed cannot be kept over a restart: " + problem);
  }
  if (watch.name() == station_[0].getText() && watch.followed() == station_[1].getText()) return;
  station_[0].setText(watch.name().c_str());
  station_[1].setText(watch.followed().c_str());
  station_.setState(watch.followed().empty() ? IPS_IDLE : IPS_OK);
  station_.apply();
}

void WeatherDriver::Look() {
  const Moment now = Now();
  Show(work_->watch.At(now));
  if (const auto end = work_->watch.FreshUntil(); end && *end >= now) work_->stale.Start(*end + Moment(1));
}

void WeatherDriver::Show(const Account& account) {
  ShowStatus(account.safe());
  ShowReasons(account);
  ShowValues(account);
}

void WeatherDriver::ShowStatus(bool safe) {
  if (safe == safe_) return;
  safe_ = safe;
  for (INDI::PropertyLight* light : {std::addressof(status_), std::addressof(safety_)}) {
    (*light)[0].setState(StateOf(safe));
    light->setState(StateOf(safe));
    light->apply();
  }
}

void WeatherDriver::ShowReasons(const Account& account) {
  if (account.safe() && !told_.empty()) Tell("Safe");
  if (account.safe()) told_.clear();
  std::string text;
  for (const Reason& reason : account.reasons) {
    if (told_.insert(reason.name).second) Tell("Unsafe: " + reason.text);
    text += (text.empty() ? "" : "; ") + reason.text;
  }
  text = account.safe() ? "Safe" : Printable(text, kLongestText);
  if (text == reasons_[0].getText()) return;
  reasons_[0].setText(text.c_str());
  reasons_.setState(StateOf(account.safe()));
  reasons_.apply();
}

void WeatherDriver::ShowValues(const Account& account) {
  // INDI's numbers cannot say "unknown". Clients go on using the last one whatever its state, and no limit is exceeded
  // by -1 or not-a-number. So a value that is unknown is not there.
  const bool same =
      std::equal(shown_.begin(), shown_.end(), account.values.begin(),
                 [](const auto& shown, const auto& value) { return shown.has_value() == value.has_value(); });
  shown_ = account.values;
  if (!same) {
    deleteProperty(kParameters);
    DefineValues();
  }
  std::size_t at = 0;
  values_[at++].setValue(account.safe() ? 0 : 1);
  for (const auto& value : shown_) {
    if (value) values_[at++].setValue(*value);
  }
  // Even where it was defined just now: KStars looks at values that are set.
  values_.apply();
}

void WeatherDriver::DefineValues() {
  const auto known = std::count_if(shown_.begin(), shown_.end(), [](const auto& value) { return value.has_value(); });
  values_.resize(static_cast<std::size_t>(known) + 1);
  std::size_t at = 0;
  values_[at++].fill(kVerdict, "Safety (0 safe, 1 unsafe)", "%.f", 0, 0, 0, safe_ ? 0 : 1);
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    const ValueForm& form = ValueForms()[i];
    if (shown_[i]) values_[at++].fill(form.name, form.label, form.format, form.lowest, form.highest, 0, *shown_[i]);
  }
  values_.fill(getDeviceName(), kParameters, "Parameters", "Parameters", IP_RO, kTimeout, StateOf(known > 0));
  defineProperty(values_);
}

}  // namespace orvalis::indi
