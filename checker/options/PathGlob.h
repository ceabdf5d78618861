#pragma once

#include <string>
#include <string_view>
#include <vector>

// Which paths a user means: the pattern of shells, part by part, so that neither `*` nor `?` stands for a slash.
//
// A glob without a slash, such as "node_modules" or "*.min.js", stands for files and folders of that name anywhere, and
// so does one that begins with "**/". Any other counts from the root: "/main.js", "www/*.js". A folder stands for all
// that is in it; "/**" and a slash at the end are left out.
class PathGlob {
 public:
  // The parts of a path, without "." and empty ones. They are views into it.
  using Parts = std::vector<std::string_view>;
  static Parts partsOf(std::string_view path);

  // Throws UserError if nothing can be meant by `glob`.
  explicit PathGlob(const std::string& glob);

  // Whether it means the path with these parts, or a folder that this path is in.
  bool matches(const Parts& path) const { return partsMeant(path) > 0; }

  // How many of the first parts make the path, or the outermost folder, that it means; 0 if it means none.
  std::size_t partsMeant(const Parts& path) const;

 private:
  struct Part {
    std::string text;
    bool isLiteral;

    bool matches(std::string_view name) const;
  };
  static Part partOf(std::string_view text);
  bool matchesAt(const Parts& path, std::size_t first) const;

  std::vector<Part> parts_;
  bool isAnywhere_ = false;
};
