#include "weather_driver.h"

namespace {

// INDI's library has `main`, and finds every device that exists by then.
orvalis::indi::WeatherDriver g_driver;

}  // namespace
