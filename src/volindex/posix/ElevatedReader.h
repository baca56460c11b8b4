// Has another process read the volume, one that may: tallyscope-volume, started by the system's own means
// after it has asked the user. Its answer comes through a pipe (see VolumeStream.h).
#pragma once

#include "volindex/readers/Reader.h"

namespace volindex {

class TElevatedReader : public TReader {
 public:
  // The command takes the root's path as a further argument; an empty one is found out as the system has it.
  // A sender that says nothing for `patience` seconds after it has begun is given up.
  explicit TElevatedReader(std::vector<std::string> command = {}, int patience = 10)
      : FCommand(std::move(command)), FPatience(patience) {}

  [[nodiscard]] const char* Name() const override { return "elevated"; }
  [[nodiscard]] bool Accepts(const TScanRoot& root) const override;
  [[nodiscard]] TReadResult Read(const TScanRoot& root, TIndexBuilder& builder,
                                 const TScanControl& control) override;

 private:
  std::vector<std::string> FCommand;
  int FPatience;
};

}  // namespace volindex
