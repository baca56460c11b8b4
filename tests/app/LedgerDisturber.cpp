// Somebody else at work on the same files as a program of its own: each line of its input is one thing to do,
// its words between tabs, and is answered with 1 if it was done, else 0. Between "storm FOLDER" and "calm"
// some entries of that tree go and come without end.
#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

namespace fs = std::filesystem;

namespace {

fs::path PathOf(const std::string& text) {
  return fs::path(std::u8string(text.begin(), text.end()));
}

// Never in the place of something.
bool Rename(const fs::path& from, const fs::path& to) {
  std::error_code failed;
  if (fs::exists(fs::symlink_status(to, failed))) return false;
  fs::rename(from, to, failed);
  return !failed;
}

bool DoOne(const std::string& what, const fs::path& path, const std::string& more) {
  std::error_code failed;
  if (what == "rename") return Rename(path, PathOf(more));
  if (what == "unlink") return fs::is_symlink(path, failed) && fs::remove(path, failed);
  if (what == "link") return fs::create_directory_symlink(PathOf(more), path, failed), !failed;
  fs::create_directories(path.parent_path(), failed);
  return !fs::exists(fs::symlink_status(path, failed)) && (std::ofstream(path) << more).flush().good();
}

// A folder gives its place to a link for a moment, and a file is away.
void Storm(const fs::path& top) {
  std::error_code failed;
  if (Rename(top / "root/d0", top / "hold/storm")) {
    fs::create_directory_symlink("../precious", top / "root/d0", failed);
    std::this_thread::yield();
    if (!failed) fs::remove(top / "root/d0", failed);
    Rename(top / "hold/storm", top / "root/d0");
  }
  if (!Rename(top / "root/d1/f1", top / "hold/storm file")) return;
  std::this_thread::yield();
  Rename(top / "hold/storm file", top / "root/d1/f1");
}

}  // namespace

int main() {
  std::atomic<bool> stormy{false};
  std::thread storm;
  for (std::string line; std::getline(std::cin, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::istringstream text(line);
    std::array<std::string, 3> words;
    for (std::string& word : words)
      std::getline(text, word, '\t');
    bool done = true;
    stormy = false;
    if (storm.joinable()) storm.join();
    if (words[0] == "storm") {
      stormy = true;
      storm = std::thread([&stormy, top = PathOf(words[1])] {
        while (stormy)
          Storm(top);
      });
    } else if (words[0] != "calm") {
      done = DoOne(words[0], PathOf(words[1]), words[2]);
    }
    std::cout << (done ? 1 : 0) << std::endl;
  }
  stormy = false;
  if (storm.joinable()) storm.join();
}
