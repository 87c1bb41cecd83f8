#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orvalis {

/// All settings: one typed value per profile key, named as the key. Loaded once at start by `LoadSettings`; code that
/// changes a value also writes its key.
///
/// Switches stored as 0 and 1 in the profile are whole numbers here too. The program grew from a focuser template,
/// whose leftovers stay because they are part of the profile's layout.
struct Settings {
  bool Absolute = false;  ///< leftover of the focuser template: clamps the leftover position
  bool Synchronous = false;
  bool Centigrade = false;  ///< show temperatures in degrees Celsius instead of Fahrenheit
  bool Reverse = false;
  bool HalfStep = false;
  double WindSpeedCloseD = 0;     ///< miles per hour; above it the wind word is "Windy"
  std::int32_t MaxCloudTemp = 0;  ///< read at start, never written afterwards
  double StepTime = 0;
  std::int32_t Position = 0;  ///< leftover; written back at shutdown
  double WindSpeedWarn = 0;   ///< miles per hour; above it the wind word is "Breeze"
  double Temp = 0;            ///< leftover; written back at shutdown
  double MaxInc = 0;
  bool AlwaysOnTop = false;    ///< keep the panel above other windows
  std::int32_t Left = 0;       ///< panel, left edge in screen pixels; read when the panel is placed
  std::int32_t Top = 0;        ///< panel, top edge in screen pixels; read when the panel is placed
  bool AdvancedSetup = false;  ///< open the setup dialog in its advanced layout
  bool CanTempComp = false;
  bool CanTemp = false;
  bool CanStepSize = false;
  bool CanHalt = false;
  double TempMax = 0;
  std::int32_t WindsAvgCnt = 0;    ///< working cycles in the wind average
  std::int32_t TempsAvgCount = 0;  ///< frames in one block average, 1 to 300
  std::int32_t BacklashComp = 0;
  bool BacklashDir = false;
  std::int32_t TempSteps = 0;
  double TPTempHysteresis = 0;  ///< degrees; sent to the unit in tenths
  double TPTempOffset = 0;
  double Thermistor_A = 0;  ///< stored for the setup dialog; the unit sends degrees already
  double Thermistor_B = 0;
  double Thermistor_C = 0;
  double Joystick_slopeR = 0;
  double Joystick_interceptR = 0;
  double ThermistorR_A = 0;
  double ThermistorR_B = 0;
  double ThermistorR_C = 0;
  std::int32_t RainThreshold = 0;       ///< counts
  std::int32_t WindThreshold = 0;       ///< counts
  std::int32_t LightThreshold = 0;      ///< counts
  std::int32_t WindTimer = 0;           ///< used by the unit
  std::int32_t WindMultiplier = 0;      ///< miles per hour are count × this ÷ 10
  std::int32_t PartCloudyDegC = 0;      ///< degrees Celsius; the sky is "Clear" from this difference
  std::int32_t FullCloudyDegC = 0;      ///< degrees Celsius; the sky is "Cloudy" up to this difference
  double CloudsThreshold = 0;           ///< degrees Celsius
  std::int32_t DemoMode = 0;            ///< 1: use the built-in lines instead of the unit
  std::int32_t g_bchkEnableSounds = 0;  ///< master switch of the alerts
  std::int32_t g_bchkRepeatSounds = 0;
  std::int32_t g_bchkRainSounds = 0;
  std::int32_t g_bchkWindSounds = 0;
  std::int32_t g_bchkLightSounds = 0;
  std::int32_t g_bchkCloudSounds = 0;
  std::int32_t g_bchkRelaySounds = 0;
  std::string g_sRainSounds;
  std::string g_sWindSounds;
  std::string g_sLightSounds;
  std::string g_sCloudSounds;
  std::string g_sRelaySounds;
  std::int32_t RainOnTime = 0;  ///< used by the unit
  std::int32_t g_bchkRainApp = 0;
  std::int32_t g_bchkWindApp = 0;
  std::int32_t g_bchkLightApp = 0;
  std::int32_t g_bchkCloudApp = 0;
  std::int32_t g_bchkRelayApp = 0;
  std::int32_t g_bchkRepeatApp = 0;
  std::string g_sRainApp;
  std::string g_sWindApp;
  std::string g_sLightApp;
  std::string g_sCloudApp;
  std::string g_sRelayApp;
  std::string g_sPWS_name;
  std::string g_sWEBcam_name;
  std::string g_sPWS_password;  ///< secret: never logged, shown or listed
  std::string g_sPWS_site;
  std::string g_sWEBcam_site;
  std::int32_t g_bAllow_PWS = 0;
  std::int32_t g_bAllow_WEB = 0;
  std::int32_t g_lFullLog = 0;     ///< 1: a line for each working cycle
  std::int32_t g_lOneLineLog = 0;  ///< 1: a file that always holds the latest record
  std::string g_sFullLogPath;
  std::string g_sOneLineLogPath;
  std::int32_t g_lPWSUpdate_interval_index = 0;
  std::int32_t g_lWEBUpdate_interval_index = 0;
  std::int32_t AutoConnect = 0;  ///< 1: connect at start and reconnect automatically

  // Outside the stamped layout: a store without them is complete, and they are at their defaults.
  std::int32_t NightTheme = 0;        ///< 1: the panel in red on black
  std::int32_t Assistant = 0;         ///< 1: the assistant of the first start is due
  std::int32_t TrayMessages = 1;      ///< 1: the tray icon tells each change of the verdict
  std::optional<double> Latitude;     ///< of the place, degrees, north is positive; none: not set
  std::optional<double> Longitude;    ///< likewise, east is positive
  std::int32_t WindUnit = 0;          ///< for people: 0 mph, 1 km/h, 2 m/s, 3 knots
  std::int32_t KeepVerdict = 0;       ///< 1: clients' `Safe` keeps the verdict of the last frame, however old
  std::int32_t WebcamBuiltIn = 0;     ///< 1: send the panel's picture with the built-in FTP
  std::int32_t SafeHoldSeconds = 10;  ///< 0 to 3600: time without a reason to be unsafe before it is safe
  std::int32_t VerdictRain = 1;       ///< 1: "Damp" and "Rain" are unsafe, whatever the unit's alarms
  std::int32_t VerdictWind = 0;       ///< 1: "Windy" is unsafe
  std::int32_t VerdictClouds = 0;     ///< 1: "Cloudy" is unsafe
  std::int32_t VerdictLight = 0;      ///< 1: "Day" is unsafe
  std::int32_t DemoCanBeSafe = 0;     ///< 1: simulated values may be called safe, for trying clients out
  std::int32_t ForceUnsafe = 0;       ///< 1: unsafe until a person releases it
  std::int32_t SafetyAlerts = 1;      ///< 1: the sounds and programs below, where one is named, are given
  std::string UnsafeSound;
  std::string UnsafeApp;
  std::string SafeSound;
  std::string SafeApp;
  std::string NoReadingsSound;
  std::string NoReadingsApp;
  std::int32_t VerdictLog = 1;  ///< 1: a line for each change of the verdict

  // In the subkey "Network", named there without "Network".
  std::int32_t NetworkEnabled = 1;           ///< 1: serve the readings over HTTP
  std::string NetworkAddress = "127.0.0.1";  ///< to listen on; "0.0.0.0" or "::" for all
  std::int32_t NetworkPort = 11111;          ///< to listen on, 0 for none
  std::int32_t NetworkDiscovery = 1;         ///< 1: clients find the program, when it is open to the network
  std::string NetworkStation;                ///< what it is called there; "" for the machine's name
  std::string NetworkNames;                  ///< further host names of this machine, separated by blanks or commas
  std::string NetworkAllowOrigin;  ///< the origin whose pages may read what is shared; "" for none, "*" for all

  // In the subkey "Mqtt", named there without "Mqtt".
  std::int32_t MqttEnabled = 0;             ///< 1: publish the readings to a broker
  std::string MqttHost;                     ///< the broker's name or address
  std::int32_t MqttPort = 1883;             ///< the broker's, 0 for none
  std::string MqttUser;                     ///< "" for none
  std::string MqttPassword;                 ///< secret: never logged, shown or listed
  std::int32_t MqttTls = 0;                 ///< 1: over an encrypted line
  std::string MqttCaFile;                   ///< certificates of the authority to trust; "" for the system's
  std::string MqttPrefix = "orvalis";       ///< what all topics begin with
  std::int32_t MqttHomeAssistant = 1;       ///< 1: Home Assistant finds the values by itself
  std::int32_t MqttAllowPlainPassword = 0;  ///< 1: the password may go to another machine over an unencrypted line
};

}  // namespace orvalis
