#pragma once

#include <span>
#include <string_view>

#include "network/http/resources.h"

namespace orvalis::network {

/// A file of the page, as it is in the sources.
struct PageFile {
  std::string_view path;  ///< that it is asked for by
  std::string_view content_type;
  std::string_view content;
  std::string_view help;  ///< "" for what only the page itself needs
};

[[nodiscard]] std::span<const PageFile> PageFiles();
/// Adds the page for a person.
void AddPage(Resources& resources);

}  // namespace orvalis::network
