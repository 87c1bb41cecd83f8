// Runs a target over the files in the folders that are named, without making up anything.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/fuzz/fuzz.h"

int main(int count, char** arguments) {
  int files = 0;
  for (int i = 1; i < count; ++i) {
    if (!std::filesystem::is_directory(arguments[i])) continue;  // without finds there is no folder for them
    for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
      // The last name is that of the input that ended it.
      std::fprintf(stderr, "%s\n", entry.path().c_str());
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string bytes(std::istreambuf_iterator<char>(file), {});
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++files;
    }
  }
  std::fprintf(stderr, "%d inputs\n", files);
  return files > 0 ? 0 : 1;
}
