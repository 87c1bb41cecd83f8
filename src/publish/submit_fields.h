#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/message.h"
#include "config/settings.h"

namespace orvalis {

/// A text box of the web publishing window that holds a setting.
struct SubmitText {
  std::string_view control;  ///< the box's object name
  std::string Settings::*member;
  std::string_view key;
  bool in_query;   ///< sent in the query, unencoded
  bool in_script;  ///< also part of the transfer script
};
/// Two of them edit the same password: one beside the station ID, one beside the webcam name.
inline constexpr std::array<SubmitText, 6> kSubmitTexts{{
    {"txtVariableName0", &Settings::g_sPWS_name, "g_sPWS_name", true, false},
    {"txtVariableName1", &Settings::g_sWEBcam_name, "g_sWEBcam_name", false, true},
    {"txtVariableValue0", &Settings::g_sPWS_password, "g_sPWS_password", true, true},
    {"txtUrl", &Settings::g_sPWS_site, "g_sPWS_site", false, false},
    {"webcamUrl", &Settings::g_sWEBcam_site, "g_sWEBcam_site", false, true},
    {"txtVariableValue1", &Settings::g_sPWS_password, "g_sPWS_password", false, true},
}};

/// Whether `text` is the placeholder of the setting `key`, such as "Your … Password".
[[nodiscard]] bool IsPrompt(std::string_view key, std::string_view text);

/// A warning about the text in `box`: that it is a placeholder, or that it breaks the query. "" when it is fine. The
/// text itself is not quoted, because it may be a password.
[[nodiscard]] Message Remark(const SubmitText& box, std::string_view text);

/// A check box of the web publishing window.
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

/// An interval list of the web publishing window. Its keys are the window's own; at the next start the row stored by
/// UploadSchedule applies.
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
