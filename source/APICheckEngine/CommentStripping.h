#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

// Comment and blank-line removal over bytes, with no notion of string literals. Exported; the engine uses the first.

extern "C" {

// Copies `length` bytes of `source` to `output` without comments and returns the number of bytes written, which is
// never more than `length`. Line ends that close a "//" comment stay, so that later lines keep their numbers; those
// inside "/* */" go. Input that ends inside a comment, or right at its "*/", gets one zero byte written in its place.
int delete_comment(const char* source, int length, char* output);

// Copies `length` bytes of `source` to `output` without lines of blanks and tabs only and returns the number of bytes
// written, which is never more than `length`. A run of such lines before another line becomes one line feed; a last
// line without a line feed is written as it stands.
int delete_blankline(const char* source, int length, char* output);
}

namespace FlashEngine_1_00::detail {

// Where a run of bytes that delete_comment keeps begins: in its output and in its input.
struct KeptRun {
  std::size_t cleaned;
  std::size_t source;
};

// The runs of `source`, in their order; two neighbours are apart in the input.
std::vector<KeptRun> keptRuns(std::string_view source);

}  // namespace FlashEngine_1_00::detail
