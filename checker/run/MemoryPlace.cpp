// A tree of names over blocks of bytes. Test: tests/places/MemoryPlace_test.cpp, which does the same on the disk.

#include "checker/run/MemoryPlace.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string_view>
#include <utility>

#include "checker/run/FileGaps.h"

using FlashEngine_1_00::ExpansionBudget;
using FlashEngine_1_00::File;
using FlashEngine_1_00::FileSink;
using FlashEngine_1_00::openFile;

namespace {

// What is kept of any file; and of one that somebody reads, although it is no package and no Flash file. The followers
// of flow and trials tell of larger ones that they are too large.
constexpr std::size_t kHead = std::size_t{64} << 10;
constexpr std::size_t kWhole = (std::size_t{16} << 20) + 1;
static_assert(kWhole < INT_MAX);

constexpr off_t kMostPackage = 256 << 20;  // bytes of a package of the user's that is read at once

enum class Kind { source, flash, other };

Kind kindOf(const std::string& path) {
  if (FlashEngine_1_00::isFlashFile(path)) return Kind::flash;
  return isNamedAsSource(path) ? Kind::source : Kind::other;
}

class MemorySink : public FileSink {
 public:
  MemorySink(std::shared_ptr<MemoryContent> content, Inflater& inflater, Kind kind, bool keepsOthers)
      : content_(std::move(content)), inflater_(inflater), kind_(kind), keepsOthers_(keepsOthers) {}

  bool write(const char* bytes, std::size_t size) override {
    if (isCut_) return true;
    content_->append(bytes, size);
    if (content_->size > most_) cutWhereNobodyReads();
    return true;
  }

  bool inflate(std::FILE* package, const FlashEngine_1_00::DeflateStream& stream) override {
    if (!inflater_.inflate(package, stream, *content_)) return false;
    if (content_->size > most_) cutWhereNobodyReads();
    return true;
  }

  bool finish() override {
    content_->cut(content_->size);
    return true;
  }

 private:
  // Once the file is larger than `most_`, which is set anew.
  void cutWhereNobodyReads() {
    constexpr std::size_t kAll = SIZE_MAX;
    const std::size_t most = keepsOthers_ ? kWhole : kHead;
    if (FlashEngine_1_00::isPackage(content_->view()) || (kind_ == Kind::flash && isMovie())) {
      most_ = kAll;
    } else {
      cutAt(kind_ == Kind::source ? std::max(most, endOfText()) : most);
    }
  }

  void cutAt(std::size_t most) {
    most_ = most;
    isCut_ = content_->size > most;
    if (isCut_) content_->cut(most);
  }

  // Whether the engine reads on behind the signature (SWF file format, header).
  bool isMovie() const {
    const std::string_view signature = content_->view().substr(0, 3);
    return signature == "FWS" || signature == "CWS";
  }

  // Behind the first zero byte: the engine reads a source so far, and none that is larger than an int.
  std::size_t endOfText() {
    const std::string_view fresh = content_->view().substr(searched_);
    const std::size_t zero = fresh.find('\0');
    if (zero != std::string_view::npos) return searched_ + zero + 1;
    searched_ = content_->size;
    return searched_ <= INT_MAX ? searched_ : std::size_t{INT_MAX};
  }

  std::shared_ptr<MemoryContent> content_;
  Inflater& inflater_;
  Kind kind_;
  bool keepsOthers_;
  bool isCut_ = false;
  std::size_t most_ = kHead;
  std::size_t searched_ = 0;
};

}  // namespace

MemoryPlace::MemoryPlace(std::function<bool(const std::string& path)> keepsOther, std::size_t lanes)
    : keepsOther_(std::move(keepsOther)), inflater_(lanes) {}

// ---- names ---------------------------------------------------------------------------------------------------------

bool MemoryPlace::isDirectory(const std::string& path) const {
  const auto found = nodes_.find(path);
  return found != nodes_.end() && found->second.content == nullptr;
}

std::string MemoryPlace::resolve(std::string_view path, ExpansionBudget* budget) {
  if (path.empty() || path.front() == '/') return {};
  std::string whole = current_;
  std::string_view last;
  for (std::size_t slash = 0; slash != std::string_view::npos;) {
    slash = path.find('/');
    const std::string_view part = path.substr(0, slash);
    if (slash != std::string_view::npos) path.remove_prefix(slash + 1);
    if (part.empty()) continue;
    if (last == "..") return {};
    if (!last.empty() && last != ".") {
      whole.append("/").append(last);
      const bool isNew = nodes_.count(whole) == 0;
      if (isNew && (budget == nullptr || !budget->takeDirectory())) return {};
      if (isNew) nodes_.emplace(whole, Node{});
      if (!isDirectory(whole)) return {};
    }
    last = part;
  }
  if (last.empty() || last == "." || last == "..") return {};
  return whole.append("/").append(last);
}

int MemoryPlace::makeExtractionDirectory(const std::string& path) {
  return nodes_.emplace(path, Node{}).second ? 0 : -1;
}

int MemoryPlace::enterDirectory(const std::string& path) {
  if (!isDirectory(path)) return -1;
  current_ = path;
  return 0;
}

bool MemoryPlace::isThere(const std::string& path) {
  return nodes_.count(resolve(path, nullptr)) > 0;
}

int MemoryPlace::createDirectory(const std::string& path) {
  const std::string whole = resolve(path, nullptr);
  return !whole.empty() && nodes_.emplace(whole, Node{}).second ? 0 : -1;
}

namespace {

// A stream over a content, which stays as long as the stream does. As on the disk, and other than with fmemopen, one
// may seek behind the end: minizip does where a package lies about the size of its fields.
struct Reader {
  std::shared_ptr<const MemoryContent> content;
  off64_t position;
};

ssize_t readFrom(void* cookie, char* buffer, std::size_t size) {
  auto& reader = *static_cast<Reader*>(cookie);
  const auto at = static_cast<std::uint64_t>(reader.position);
  if (at >= reader.content->size) return 0;
  const std::size_t count = std::min(size, reader.content->size - static_cast<std::size_t>(at));
  std::memcpy(buffer, reader.content->bytes.get() + at, count);
  reader.position += static_cast<off64_t>(count);
  return static_cast<ssize_t>(count);
}

int seekIn(void* cookie, off64_t* offset, int whence) {
  auto& reader = *static_cast<Reader*>(cookie);
  const off64_t end = static_cast<off64_t>(reader.content->size);
  off64_t target = whence == SEEK_CUR ? reader.position : whence == SEEK_END ? end : 0;
  if (__builtin_add_overflow(target, *offset, &target) || target < 0) return -1;
  *offset = reader.position = target;
  return 0;
}

int closeReader(void* cookie) {
  delete static_cast<Reader*>(cookie);
  return 0;
}

File openContent(std::shared_ptr<const MemoryContent> content) {
  auto reader = std::make_unique<Reader>(Reader{std::move(content), 0});
  File file(fopencookie(reader.get(), "rb", {readFrom, nullptr, seekIn, closeReader}));
  if (file != nullptr) (void)reader.release();
  return file;
}

}  // namespace

// ---- files ---------------------------------------------------------------------------------------------------------

std::unique_ptr<FileSink> MemoryPlace::createFile(const std::string& path, ExpansionBudget& budget, bool& replaced) {
  const std::string whole = resolve(path, &budget);
  replaced = false;
  if (whole.empty() || isDirectory(whole)) return nullptr;
  std::vector<std::string>& listed = listed_[current_];
  Node& node = nodes_[whole];
  replaced = node.content != nullptr;
  node = {std::make_shared<MemoryContent>(), listed.size()};
  listed.push_back(whole);
  return std::make_unique<MemorySink>(node.content, inflater_, kindOf(whole),
                                      keepsOther_ != nullptr && keepsOther_(whole));
}

void MemoryPlace::addText(const std::string& path, const std::string& text) {
  auto content = std::make_shared<MemoryContent>();
  if (!text.empty()) content->append(text.data(), text.size());
  texts_[path] = std::move(content);
}

File MemoryPlace::open(const std::string& path) {
  const auto node = nodes_.find(path);
  if (node != nodes_.end()) {
    return node->second.content == nullptr ? nullptr : openContent(node->second.content);
  }
  const std::string& user = usersPath(path);
  const auto text = texts_.find(user);
  if (text != texts_.end()) return openContent(text->second);
  if (auto package = packageAt(user)) return openContent(std::move(package));
  return openPackage(user, openFile(user, "rb"));
}

const std::string& MemoryPlace::usersPath(const std::string& path) const {
  const auto input = inputs_.find(path);
  return input == inputs_.end() ? path : input->second;
}

std::shared_ptr<const MemoryContent> MemoryPlace::packageAt(const std::string& path) const {
  const std::lock_guard<std::mutex> lock(packageMutex_);
  return path == packagePath_ ? package_ : nullptr;
}

void MemoryPlace::beginExtraction(const std::string& path) {
  const auto node = nodes_.find(path);
  inflater_.begin(node != nodes_.end() ? node->second.content : packageAt(usersPath(path)));
}

// An entry costs several small reads from different places, each of which would be two calls of the system's.
File MemoryPlace::openPackage(const std::string& path, File file) {
  char head[8];
  if (file == nullptr) return file;
  const off_t size = FlashEngine_1_00::sizeOf(file.get());
  const std::size_t count = std::fread(head, 1, sizeof head, file.get());
  std::rewind(file.get());
  if (size > kMostPackage || !FlashEngine_1_00::isPackage({head, count})) return file;
  auto content = std::make_shared<MemoryContent>();
  const auto wanted = static_cast<std::size_t>(size);
  if (!content->reserve(wanted)) return file;
  content->size = std::fread(content->bytes.get(), 1, wanted, file.get());
  if (content->size != wanted) {
    std::rewind(file.get());
    return file;
  }
  const std::lock_guard<std::mutex> lock(packageMutex_);
  packagePath_ = path;
  package_ = std::move(content);
  return openContent(package_);
}

File MemoryPlace::createResultFile(const std::string& /*path*/) {
  return openFile("/dev/null", "wb");  // the lines are in the engine's list, too
}

void MemoryPlace::listFiles(const std::string& dir, FlashEngine_1_00::PartObserver* /*observer*/,
                            std::vector<std::string>& found) {
  const std::vector<std::string>& listed = listed_[dir];
  for (std::size_t i = 0; i < listed.size(); ++i) {
    if (nodes_.at(listed[i]).place != i) continue;
    if (isHidden_ == nullptr || !isHidden_(listed[i], dir)) found.push_back(listed[i]);
  }
}

void MemoryPlace::remove(const std::string& path) {
  for (const std::string& file : listed_[path])
    nodes_.erase(file);
  listed_.erase(path);
}
