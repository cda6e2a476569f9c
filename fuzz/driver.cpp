// Replays inputs through a fuzz target where libFuzzer is not used: every file named, and every
// file under every folder named, in the order of their names (a name that is not there is passed
// over). Any sanitizer report ends the run.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  std::vector<fs::path> inputs;
  for (int i = 1; i < argc; ++i) {
    const fs::path given(argv[i]);
    std::error_code ec;
    if (fs::is_directory(given, ec)) {
      for (const auto& entry : fs::recursive_directory_iterator(given, ec)) {
        if (entry.is_regular_file()) inputs.push_back(entry.path());
      }
    } else if (fs::is_regular_file(given, ec)) {
      inputs.push_back(given);
    } else {
      // A folder of crashes or inputs that has gone is simply empty.
      std::fprintf(stderr, "no such input, passed over: %s\n", argv[i]);
    }
  }
  std::sort(inputs.begin(), inputs.end());
  for (const fs::path& input : inputs) {
    std::ifstream in(input, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu inputs replayed\n", inputs.size());
  return 0;
}
