#include "app/startup.h"

#include <chrono>
#include <exception>

namespace orvalis {
namespace {

constexpr std::chrono::milliseconds kTick{1000};
/// The position for a panel beyond the left or upper edge of the screen.
constexpr std::int32_t kFallbackEdge = 100;

}  // namespace

void Startup::Main() {
  parts_.flags = {.started_by_user = parts_.started_by_user};
  parts_.store.Register();
  parts_.utility.Create();
  parts_.settings = parts_.store.LoadSettings();
  parts_.leftovers.Refresh(parts_.settings);
  if (parts_.window != nullptr) PlacePanel();
  parts_.poll_timer.SetInterval(kTick);
  parts_.second_timer.SetInterval(kTick);
  parts_.logs.OpenFullLog(parts_.settings);
  parts_.poll_timer.SetEnabled(true);
  // Sets the dialog's check box from the setting, with the same immediate effect as a click.
  if (parts_.window != nullptr) parts_.switches.SetAutoConnect(parts_.settings.AutoConnect == 1);
  if (AutoConnect() && !parts_.demo_mode()) parts_.connector.Connect();
  parts_.second_timer.SetEnabled(true);
}

void Startup::PlacePanel() {
  parts_.store.Load("Left", parts_.settings);
  parts_.store.Load("Top", parts_.settings);
  // Only positions beyond the left or top edge are corrected: a second screen may be off today and back tomorrow.
  const auto correct = [&](std::int32_t& edge, const char* key) {
    if (edge >= 0) return;
    edge = kFallbackEdge;
    parts_.store.Write(key, parts_.settings);
  };
  correct(parts_.settings.Left, "Left");
  correct(parts_.settings.Top, "Top");
  parts_.window->SetAlwaysOnTop(parts_.settings.AlwaysOnTop);
  parts_.window->Place(parts_.settings.Left, parts_.settings.Top);
  parts_.window->Show();
}

void Startup::Shutdown() noexcept {
  if (parts_.flags.shutting_down) return;
  parts_.flags.shutting_down = true;
  parts_.poll_timer.SetEnabled(false);
  parts_.second_timer.SetEnabled(false);
  try {
    SaveState();
  } catch (const std::exception&) {
    // Failing to save the panel's position must not stop the shutdown.
  }
  parts_.utility.Release();
  parts_.connector.Disconnect();
}

void Startup::SaveState() {
  Profile::Batch batch(parts_.store.profile());
  parts_.store.Write("Position", parts_.settings);
  parts_.store.Write("Temp", parts_.settings);
  if (parts_.window != nullptr) {
    parts_.settings.Left = parts_.window->Left();
    parts_.settings.Top = parts_.window->Top();
    parts_.store.Write("Left", parts_.settings);
    parts_.store.Write("Top", parts_.settings);
  }
  batch.Commit();
}

}  // namespace orvalis
