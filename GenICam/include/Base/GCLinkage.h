// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Visibility of the base library's symbols. Everything is built with hidden visibility; what is public says
/// so.

#define KXGC_EXPORT __attribute__((visibility("default")))

/// Marks functions and classes that libKxGCBase exports.
#define GCBASE_API KXGC_EXPORT
/// Marks classes whose type information must be one and the same in all libraries, such as exceptions.
#define GCBASE_RTTI_CLASS_API KXGC_EXPORT
