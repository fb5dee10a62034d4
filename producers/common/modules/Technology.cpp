// SPDX-License-Identifier: Apache-2.0

#include "Technology.h"

#include <cstddef>

namespace KxProducer
{
namespace
{

struct CTechnologyNames
{
    const char *tlType, *convention, *display;
};

// In the order of ETechnology.
constexpr CTechnologyNames kTechnologies[] = {{"U3V", "USB3Vision", "USB3 Vision"},
                                              {"GEV", "GigEVision", "GigE Vision"},
                                              {"CXP", "CoaXPress", "CoaXPress"},
                                              {"Custom", "Custom", "Of its own"}};

const CTechnologyNames& NamesOf(ETechnology technology)
{
    return kTechnologies[static_cast<size_t>(technology)];
}

} // namespace

const char* TlType(ETechnology technology) { return NamesOf(technology).tlType; }
const char* ConventionName(ETechnology technology) { return NamesOf(technology).convention; }
const char* DisplayName(ETechnology technology) { return NamesOf(technology).display; }

} // namespace KxProducer
