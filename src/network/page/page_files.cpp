#include "network/page/page_files.h"

#include <array>
#include <string>

#include "network/http/http_message.h"
#include "page_contents.h"

namespace orvalis::network {

std::span<const PageFile> PageFiles() {
  constexpr std::string_view kScript = "text/javascript; charset=utf-8";
  static constexpr std::array<PageFile, 6> kFiles{{
      {"/", kHtmlType, page_contents::kPageHtml, "a page for a person"},
      {"/page.css", "text/css; charset=utf-8", page_contents::kPageCss, ""},
      {"/look.js", kScript, page_contents::kLookJs, ""},
      {"/page.js", kScript, page_contents::kPageJs, ""},
      {"/live.js", kScript, page_contents::kLiveJs, ""},
      {"/curves.js", kScript, page_contents::kCurvesJs, ""},
  }};
  return kFiles;
}

void AddPage(Resources& resources) {
  for (const PageFile& file : PageFiles()) {
    resources.Add({.path = std::string(file.path),
                   .get = [file](const HttpRequest&) -> HttpResponse {
                     return {.content_type = file.content_type, .body = std::string(file.content)};
                   },
                   .help = std::string(file.help)});
  }
}

}  // namespace orvalis::network
