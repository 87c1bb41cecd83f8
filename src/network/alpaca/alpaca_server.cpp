#include "network/alpaca/alpaca_server.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orvalis::network {
namespace {

std::string LowerCase(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

HttpResponse Page(int status, const std::string& title, const std::string& content) {
  return {.status = status,
          .content_type = kHtmlType,
          .body = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>" + EscapeHtml(title) +
                  "</title></head>\n<body><h1>" + EscapeHtml(title) + "</h1>\n" + content + "</body></html>\n"};
}

constexpr const char* kHowToSet =
    "<p>Nothing can be set over the network. Address, port and the other settings are in the setup dialog of the "
    "program "
    "and in its profile.</p>\n";

}  // namespace

void AlpacaServer::AddTo(Resources& resources) {
  for (AlpacaDevice* const device : devices_) AddDevice(*device, resources);
  AddManagement(resources);
  AddPages(resources);
  const auto bad_call = [](const HttpRequest&) {
    return TextAnswer(kBadRequest, "There is no such device or member. The list of what there is: /help");
  };
  for (const char* const path : {"/api/*", "/management/*"}) {
    resources.Add({.path = path, .get = bad_call, .put = bad_call});
  }
}

void AlpacaServer::AddDevice(AlpacaDevice& device, Resources& resources) {
  const std::string folder = "/api/v1/" + LowerCase(device.identity().type) + "/0/";
  std::map<std::string, Resource> by_path;
  for (AlpacaMember& member : device.Members()) {
    Resource& resource = by_path[folder + member.name];
    resource.path = folder + member.name;
    if (!resource.help.empty()) resource.help += "; ";
    resource.help += member.help;
    const bool writes = member.method == Method::kPut;
    (writes ? resource.put : resource.get) = [this, member = std::move(member)](const HttpRequest& request) {
      return Call(member, request);
    };
  }
  for (auto& entry : by_path) resources.Add(std::move(entry.second));
}

void AlpacaServer::AddManagement(Resources& resources) {
  const auto add = [&](std::string path, Json default_value, std::string help, AlpacaMember::Handler handler) {
    AlpacaMember member{path, Method::kGet, std::move(default_value), std::move(handler)};
    resources.Add({.path = std::move(path),
                   .get = [this, member](const HttpRequest& request) { return Call(member, request); },
                   .help = std::move(help)});
  };
  add("/management/apiversions", Json::array(), "versions of the Alpaca interface",
      [](const AlpacaCall&) { return Json::array({1}); });
  add("/management/v1/description", Json::object(), "the Alpaca server", [this](const AlpacaCall&) {
    return Json{{"ServerName", "Orvalis"},
                {"Manufacturer", "Orvalis"},
                {"ManufacturerVersion", ORVALIS_VERSION},
                {"Location", station_name_}};
  });
  add("/management/v1/configureddevices", Json::array(), "the Alpaca devices",
      [this](const AlpacaCall&) { return DeviceList(); });
}

void AlpacaServer::AddPages(Resources& resources) {
  resources.Add({.path = "/setup",
                 .get =
                     [this](const HttpRequest&) {
                       return Page(kOk, "Orvalis " ORVALIS_VERSION ", " + station_name_,
                                   std::string("<p>Manufacturer: Orvalis</p>\n") + kHowToSet);
                     },
                 .help = "about the Alpaca server"});
  for (AlpacaDevice* const device : devices_) {
    resources.Add({.path = "/setup/v1/" + LowerCase(device->identity().type) + "/0/setup",
                   .get = [device](const HttpRequest&) { return Page(kOk, device->identity().name, kHowToSet); },
                   .help = "about the Alpaca device"});
  }
  resources.Add({.path = "/setup/*",
                 .get = [](const HttpRequest&) { return Page(kForbidden, "There is no such device", kHowToSet); }});
}

HttpResponse AlpacaServer::Call(const AlpacaMember& member, const HttpRequest& request) {
  try {
    const AlpacaCall call(request);
    try {
      Json value = member.handler(call);
      return AlpacaAnswer(call, NextTransaction(), std::move(value));
    } catch (const AlpacaError& error) {
      return AlpacaAnswer(call, NextTransaction(), member.default_value, error.number(), error.what());
    }
  } catch (const BadCall& error) {
    return TextAnswer(kBadRequest, error.what());
  }
}

Json AlpacaServer::DeviceList() const {
  Json list = Json::array();
  for (const AlpacaDevice* const device : devices_) {
    const AlpacaIdentity& identity = device->identity();
    list.push_back({{"DeviceName", identity.name},
                    {"DeviceType", identity.type},
                    {"DeviceNumber", 0},
                    {"UniqueID", identity.unique_id}});
  }
  return list;
}

void AlpacaServer::SetStation(const Station& station) {
  station_name_ = station.name;
  observing_conditions_.SetIdentity("Orvalis weather, " + station.name, station.observing_conditions_id);
  safety_monitor_.SetIdentity("Orvalis safety, " + station.name, station.safety_monitor_id);
}

std::uint32_t AlpacaServer::NextTransaction() {
  // 0 means that there is none.
  if (++last_transaction_ == 0) ++last_transaction_;
  return last_transaction_;
}

}  // namespace orvalis::network
