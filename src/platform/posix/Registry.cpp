#include "platform/Registry.h"

std::optional<TRegistryValue> ReadRegistry(TRegistryRoot, const QString&, const QString&) {
  return std::nullopt;
}
