#include "volindex/TestTree.h"

#include "fixtures/NativePath.h"
#include "fixtures/TempTree.h"
#include "volindex/TestSystem.h"

namespace volindex {

namespace {

QByteArray Bytes(const std::string& text) {
  return QByteArray::fromStdString(text);
}

}  // namespace

TTestTree::TTestTree() : FTree(new TTempTree), FRoot(NameToBytes(FTree->Path()).toStdString()) {}
TTestTree::~TTestTree() = default;

void TTestTree::AddFolder(const std::string& name) {
  FTree->MakeFolder(Bytes(name));
}

void TTestTree::AddFile(const std::string& name, uint64_t size) {
  FTree->MakeHole(Bytes(name), static_cast<qint64>(size));
}

void TTestTree::AddLink(const std::string& file, const std::string& name) {
  FTree->MakeHardLink(Bytes(name), Bytes(file));
}

void TTestTree::AddSpecialFile(const std::string& name, unsigned which) {
  if (which % 2 == 0) return FTree->MakeSystemEntry(Bytes(name));
  if (!HasDrives()) return FTree->MakeLink(Bytes(name), "/");
  AddFile(name, 0);
  (void)FTree->Hide(Bytes(name));
}

void TTestTree::Remove(const std::string& name) {
  FTree->Remove(Bytes(name));
}

void SetVariable(const char* name, const char* value) {
  value == nullptr ? qunsetenv(name) : qputenv(name, value);
}

}  // namespace volindex
