#pragma once

#include <defaultdevice.h>

#include <memory>
#include <set>
#include <string>

#include "address.h"
#include "event_set.h"
#include "observation_source.h"
#include "station_memory.h"
#include "station_watch.h"

namespace orvalis::indi {

/// The program's readings and verdict as a weather device of INDI.
///
/// Not on INDI's own class for weather: that one lets clients override the status, widen its range and stop its
/// updates, and keeps the last status when a reading fails. Here there is nothing to write but the address and the
/// station.
class WeatherDriver : public INDI::DefaultDevice {
 public:
  WeatherDriver();
  ~WeatherDriver() override;
  WeatherDriver(const WeatherDriver&) = delete;
  WeatherDriver& operator=(const WeatherDriver&) = delete;

  void ISGetProperties(const char* device) override;
  bool ISNewText(const char* device, const char* name, char* texts[], char* names[], int n) override;
  bool ISNewSwitch(const char* device, const char* name, ISState* states, char* names[], int n) override;

 protected:
  const char* getDefaultName() override { return "Orvalis"; }
  bool initProperties() override;
  using INDI::DefaultDevice::loadConfig;
  bool loadConfig(bool silent, const char* property) override;
  bool loadDefaultConfig() override;
  bool saveConfigItems(FILE* file) override;

 private:
  /// What runs from the first question of a client on.
  struct Work;

  void Begin();
  void End();
  void Tell(const std::string& text);
  void ReadAddress(char* texts[], char* names[], int n);
  void SetAddress(const Address& address);
  void ShowAddress(IPState state);
  void Follow();
  void StationAnswered();
  void Look();
  void Show(const Account& account);
  void ShowStatus(bool safe);
  void ShowReasons(const Account& account);
  void ShowValues(const Account& account);
  void DefineValues();

  INDI::PropertyLight status_{1};
  INDI::PropertyLight safety_{1};
  INDI::PropertyText reasons_{1};
  INDI::PropertyNumber values_{1};  ///< the verdict, and the values that are known
  INDI::PropertyText station_{2};   ///< name, UUID
  INDI::PropertySwitch follow_{1};
  INDI::PropertyText address_text_{2};  ///< host, port

  Address address_;
  bool loading_ = false;  ///< a configuration file is read
  Values shown_;
  bool safe_ = false;           ///< as clients know it
  std::set<std::string> told_;  ///< the names of the reasons since it was safe
  std::string kept_;            ///< the station in the memory
  std::unique_ptr<Work> work_;
};

}  // namespace orvalis::indi
