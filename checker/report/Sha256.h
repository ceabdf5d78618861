#pragma once

#include <string>

// SHA-256 of a file's bytes, 64 hexadecimal digits as sha256sum prints them; empty if it is no file that can be read.
std::string sha256OfFile(const std::string& path);
