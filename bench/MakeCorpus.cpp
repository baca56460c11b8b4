// make-corpus: a folder tree to measure on, the same for the same numbers. Files are holes with realistic
// lengths, so they cost an inode each and no blocks; names have many lengths and alphabets, and a few are no
// valid text. One file in 2500 has some names more, in other folders.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr int kMaxDepth = 24;

struct TFolder {
  size_t Parent = 0;
  int Depth = 0;
  int Files = 0;
  std::string Path;
};

[[noreturn]] void Fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

class TCorpus {
 public:
  TCorpus(std::string root, int files, int folders, unsigned seed, bool validNames)
      : FFiles(files), FValidNames(validNames), FRandom(seed), FLinkRandom(seed) {
    FFolders.reserve(static_cast<size_t>(folders) + 1);
    FFolders.push_back({0, 0, 0, std::move(root)});
    for (int i = 0; i < folders; ++i)
      PlanFolder();
    PlanFiles();
  }

  void Make() {
    for (size_t i = 0; i < FFolders.size(); ++i)
      MakeFolder(FFolders[i], i);
    for (size_t i = 0; i < FLinked.size(); ++i)
      LinkFile(FLinked[i], i);
  }

  [[nodiscard]] uint64_t Bytes() const { return FBytes; }

 private:
  uint64_t Below(uint64_t bound) { return FRandom() % bound; }

  // Any folder may get the next one, so a few are wide, many are leaves and depths vary.
  void PlanFolder() {
    size_t parent = Below(FFolders.size());
    while (FFolders[parent].Depth >= kMaxDepth)
      parent = FFolders[parent].Parent;
    FFolders.push_back({parent, FFolders[parent].Depth + 1, 0, {}});
  }

  // One file in five goes to the first hundredth of the folders.
  void PlanFiles() {
    const uint64_t crowded = FFolders.size() / 100 + 1;
    for (int i = 0; i < FFiles; ++i)
      ++FFolders[Below(Below(5) == 0 ? crowded : FFolders.size())].Files;
  }

  std::string Name(size_t number) {
    static constexpr std::array kWords = {"a",      "img",     "report", "Annual summary of accounts",
                                          "node",   "données", "Übung",  "журнал",
                                          "資料集", "cache",   "x86",    "a rather long name with many words",
                                          "IMG_",   "lib",     "test",   "🎵 track"};
    static constexpr std::array kEndings = {"", ".txt", ".jpeg", ".cpp", ".h", ".so.1", ".json", ".flac"};
    std::string name =
        kWords[Below(kWords.size())] + std::to_string(number) + kEndings[Below(kEndings.size())];
    if (Below(10'000) == 0 && !FValidNames) name += '\xff';
    return name;
  }

  // About 30 KB in the middle, from 0 to some GB.
  uint64_t Length() {
    if (Below(20) == 0) return 0;
    const auto exponent = static_cast<double>(Below(10'000) + Below(10'000) + Below(10'000)) / 1000;
    return static_cast<uint64_t>(std::exp2(exponent)) + Below(4096);
  }

  void MakeFolder(TFolder& folder, size_t number) {
    if (number != 0) folder.Path = FFolders[folder.Parent].Path + '/' + Name(number);
    if (mkdir(folder.Path.c_str(), 0777) != 0) Fail(folder.Path);
    const int descriptor = open(folder.Path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) Fail(folder.Path);
    for (int i = 0; i < folder.Files; ++i) {
      const std::string name = Name(FFolders.size() + static_cast<size_t>(i));
      MakeFile(descriptor, name);
      if (FLinkRandom() % kFilesPerLinked == 0) FLinked.push_back(folder.Path + '/' + name);
    }
    close(descriptor);
  }

  void LinkFile(const std::string& file, size_t number) {
    for (size_t name = 0; name <= number % 3; ++name) {
      const TFolder& folder = FFolders[FLinkRandom() % FFolders.size()];
      const std::string path = folder.Path + "/again" + std::to_string(number) + '.' + std::to_string(name);
      if (link(file.c_str(), path.c_str()) != 0) Fail(path);
    }
  }

  void MakeFile(int folder, const std::string& name) {
    const uint64_t length = Length();
    const int file = openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0 || ftruncate(file, static_cast<off_t>(length)) != 0) Fail(name);
    close(file);
    FBytes += length;
  }

  static constexpr uint64_t kFilesPerLinked = 2500;

  const int FFiles;
  const bool FValidNames;
  std::mt19937_64 FRandom;
  std::mt19937_64 FLinkRandom;
  std::vector<std::string> FLinked;  // files that shall have further names
  std::vector<TFolder> FFolders;
  uint64_t FBytes = 0;
};

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(u"Makes a folder tree to measure on. The folder must not exist yet."_qs);
  parser.addHelpOption();
  parser.addPositionalArgument(u"FOLDER"_qs, u"The folder to make."_qs);
  parser.addOptions({
      {u"files"_qs, u"Number of files; the big corpus has 1000000."_qs, u"N"_qs, u"20000"_qs},
      {u"folders"_qs, u"Number of folders; the big corpus has 83000."_qs, u"M"_qs, u"1700"_qs},
      {u"seed"_qs, u"Another seed gives another tree."_qs, u"S"_qs, u"1"_qs},
      {u"valid-names"_qs, u"Only names that are valid text, for file systems that take no others."_qs},
  });
  parser.process(application);
  const int files = parser.value(u"files"_qs).toInt();
  const int folders = parser.value(u"folders"_qs).toInt();
  if (parser.positionalArguments().size() != 1 || files < 0 || folders < 0) parser.showHelp(2);
  try {
    TCorpus corpus(QFile::encodeName(parser.positionalArguments().first()).toStdString(), files, folders,
                   parser.value(u"seed"_qs).toUInt(), parser.isSet(u"valid-names"_qs));
    corpus.Make();
    std::printf("%d files, %d folders, %llu bytes\n", files, folders,
                static_cast<unsigned long long>(corpus.Bytes()));
  } catch (const std::system_error& error) {
    std::fprintf(stderr, "make-corpus: %s\n", error.what());
    return 1;
  }
  return 0;
}
