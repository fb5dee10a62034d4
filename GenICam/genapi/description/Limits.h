// SPDX-License-Identifier: Apache-2.0
// How much of everything a description may hold. Real ones stay two orders of magnitude below; what is above
// is an attack or an accident, and reading it must not cost the program its memory.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KxGenApi
{

/// Bytes of XML text, unzipped.
constexpr size_t kMaxContentBytes = 64u << 20;
/// Bytes of a zip archive.
constexpr size_t kMaxArchiveBytes = 64u << 20;
/// '<' characters, which bound the memory that the XML parser takes.
constexpr size_t kMaxTags = 8u << 20;
/// Nodes, those made of constants, expressions and enumeration entries included.
constexpr size_t kMaxNodes = 1u << 20;
/// Elements of nodes. A StructReg's elements count once per entry, a formula's once per expression.
constexpr size_t kMaxProperties = 4u << 20;
/// Group in Group, element in Extension and the like.
constexpr unsigned kMaxNesting = 64;
/// Bytes of a node's name.
constexpr size_t kMaxNameBytes = 1024;

/// Names that fall on top of each other in the table of names. Chance makes a few dozen; thousands are made
/// on purpose, to make reading take hours.
constexpr size_t kMaxNameCollisions = 2048;

} // namespace KxGenApi
