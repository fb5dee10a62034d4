// SPDX-License-Identifier: Apache-2.0
// The description of a node map, as a file.
#pragma once

#include "FeatureList.h"

#include <string>

namespace KxProducer
{

struct CDescriptionHead
{
    std::string model;
    std::string toolTip;
    std::string portName;
    std::string guid; // the last twelve hexadecimal digits
};

/// Text of the description of features whose registers are in the map.
std::string WriteDescription(const CDescriptionHead& head, const CFeatureList& features, CRegisterMap& map);

/// A zip archive with one file in it, deflated.
std::string Zip(const std::string& name, const std::string& content);

} // namespace KxProducer
