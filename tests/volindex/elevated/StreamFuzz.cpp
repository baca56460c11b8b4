// The input is what a sender says.
#include "volindex/elevated/VolumeStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  volindex::TIndexBuilder builder;
  volindex::TStreamParser parser(builder, 10'000, [](int) {});
  const auto bytes = std::as_bytes(std::span(data, size));
  const std::size_t half = size / 2;
  parser.Feed(bytes.first(half));
  const std::atomic<bool> goOn{false};
  if (parser.Feed(bytes.subspan(half)) == volindex::TStreamState::Done &&
      builder.Finish(goOn) == volindex::TFinish::Done) {
    const volindex::TVolumeIndex index = builder.TakeIndex();
    for (const volindex::TFileRecord& file : index.TopFiles())
      (void)index.FolderPath(file.Folder);
  }
  return 0;
}
