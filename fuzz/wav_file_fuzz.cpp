// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a wave file: the reader must keep to the file and to frames that it has told of.

#include <vector>

#include "host/wav_file_reader.h"
#include "require.h"
#include "sim/sim_disk.h"

namespace tarvolt {
namespace {

void ReadAll(WavFileReader& reader) {
  constexpr std::int64_t kAtATime = 100;
  const std::int64_t frames = reader.Frames();
  std::vector<char> bytes(static_cast<std::size_t>(kAtATime * reader.Format().FrameBytes()));
  for (int pass = 0; pass < 2; ++pass) {
    std::int64_t read = 0;
    while (const std::int64_t now = reader.ReadFrames(bytes.data(), kAtATime)) {
      Require(now > 0 && now <= kAtATime);
      read += now;
    }
    Require(read == frames);
    reader.Rewind();
  }
}

}  // namespace
}  // namespace tarvolt

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  SimDisk files(1);
  files.Put("a.wav", std::string_view(reinterpret_cast<const char*>(data), size));
  std::string why;
  if (const auto reader = WavFileReader::Open(files, "a.wav", why)) {
    Require(reader->Format().FrameBytes() > 0 && reader->Format().samplesPerSecond > 0);
    ReadAll(*reader);
  } else {
    Require(!why.empty());
  }
  return 0;
}
