// SPDX-License-Identifier: Apache-2.0
// Models in use, by the content they were made from, so that several maps of one file share one.
#pragma once

#include "runtime/NodeMap.h"

#include <GenApi/NodeMapFactory.h>

#include <memory>
#include <string>
#include <string_view>

namespace KxGenApi
{

/// Reads a description or finds the one that is in use already. Any thread.
/// Raises RuntimeException when only a used one is wanted and there is none; else what ReadDescription
/// raises.
std::shared_ptr<Model> LoadModel(std::string_view content, ContentType type, GenApi::ECacheUsage_t usage);
/// The same for content that nobody else needs; spares a copy.
std::shared_ptr<Model> LoadModel(std::string&& content, ContentType type, GenApi::ECacheUsage_t usage);

/// Forgets all; those in use live on.
bool ClearModelCache();

} // namespace KxGenApi
