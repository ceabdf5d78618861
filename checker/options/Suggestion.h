#pragma once

#include <string>
#include <vector>

// "; did you mean 'app.wgt'?" with the candidate that is most like `name`; empty if none is near.
std::string didYouMean(const std::string& name, const std::vector<std::string>& candidates);

// The same with the files and directories beside `path`, which is not there.
std::string didYouMeanFile(const std::string& path);
