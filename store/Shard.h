#pragma once

#include <string>

// Parts of a list of applications, for machines that share nothing but the list.

namespace store {

struct Shard {
  unsigned index = 1;  // from 1
  unsigned count = 1;

  // Whether this part has the application at `path`: by a hash of its bytes, the same on every machine. Every path is
  // in one part.
  bool has(const std::string& path) const;
};

// The part that "3/16" names; of "auto" the one that the environment of a Slurm array, an AWS Batch array or a
// Kubernetes indexed job names. Kubernetes does not tell a pod how many there are: TARVO_SHARDS does, as the job's
// completions. Throws std::invalid_argument with a message for the user.
Shard shardOf(const std::string& text);

}  // namespace store
