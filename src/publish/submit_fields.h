#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "config/settings.h"

namespace orvalis {

/// A text box of the web publishing window that holds a setting.
struct SubmitText {
  std::string_view control;  ///< the box's object name
  std::string Settings::*member;
  std::string_view key;
  bool in_script;  ///< the transfer script holds it too
};
inline constexpr std::array<SubmitText, 5> kSubmitTexts{{
    {"txtVariableName0", &Settings::g_sPWS_name, "g_sPWS_name", false},
    {"txtVariableName1", &Settings::g_sWEBcam_name, "g_sWEBcam_name", true},
    {"txtVariableValue0", &Settings::g_sPWS_password, "g_sPWS_password", true},
    {"txtUrl", &Settings::g_sPWS_site, "g_sPWS_site", false},
    {"webcamUrl", &Settings::g_sWEBcam_site, "g_sWEBcam_site", true},
}};

/// A check box of it.
struct SubmitSwitch {
  std::string_view control;
  std::int32_t Settings::*member;
  std::string_view key;
};
inline constexpr std::array<SubmitSwitch, 3> kSubmitSwitches{{
    {"chk_AllowPWS", &Settings::g_bAllow_PWS, "g_bAllow_PWS"},
    {"chk_AllowWEB", &Settings::g_bAllow_WEB, "g_bAllow_WEB"},
    {"chkWebcamBuiltIn", &Settings::WebcamBuiltIn, "WebcamBuiltIn"},
}};

/// A list of intervals of it. Its keys are the window's own: at the next start the row is the one that the poll cycle
/// has kept, see UploadSchedule.
struct SubmitInterval {
  std::string_view control;
  std::int32_t Settings::*row;
  std::string_view index_key;
  std::string_view interval_key;
};
inline constexpr std::array<SubmitInterval, 2> kSubmitIntervals{{
    {"PWSUploadTime", &Settings::g_lPWSUpdate_interval_index, "g_sPWSUpdate_interval_index", "g_sPWSUpdate_interval"},
    {"WEBUploadTime", &Settings::g_lWEBUpdate_interval_index, "g_sWEBUpdate_interval_index", "g_sWEBUpdate_interval"},
}};

}  // namespace orvalis
