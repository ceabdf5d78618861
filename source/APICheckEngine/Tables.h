#pragma once

#include <array>
#include <cstddef>

// Exported tables. Order, duplicates and odd spellings are part of the interface.

constexpr std::size_t kSystemFunctionCount = 451;
constexpr std::size_t kDocumentExtensionCount = 12;
constexpr std::size_t kLetterCount = 26;

extern const char* const SystemFunctionPool[kSystemFunctionCount];    // SystemFunctionPool.cpp
extern const char* const documentExtention[kDocumentExtensionCount];  // Tables.cpp
extern const char* const word[kLetterCount];                          // "a" to "z"
extern const char* const word4CapitalSWF[kLetterCount];               // "A" to "Z"

namespace FlashEngine_1_00 {

constexpr std::size_t kPluginClassCount = 41;

// The class identifiers of the platform's plug-ins, in the order in which they are tried (PluginClassIds.cpp).
extern const std::array<const char*, kPluginClassCount> pluginClassIdTable;

// The extension-framework plug-in, whose methods are reached through "Execute".
constexpr const char* kExtensionPlugin = "MORVANE-NAVERTIX-KOB";

}  // namespace FlashEngine_1_00
