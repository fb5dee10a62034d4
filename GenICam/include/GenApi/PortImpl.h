// SPDX-License-Identifier: Apache-2.0
// Base for ports that programs write themselves.
#pragma once

#include <GenApi/GenApiLinkage.h>
#include <GenApi/IPortConstruct.h>

namespace GenApi
{

/// A port that is its own implementation. Derived classes give access mode, Read and Write; the node map
/// calls them with its lock held.
class GENAPI_DECL CPortImpl : public IPortConstruct
{
public:
    /// Does nothing: there is nothing to hand the calls on to.
    void SetPortImpl(IPort* pPort) override { (void)pPort; }
    /// No: what passes is not swapped.
    EYesNo GetSwapEndianess() override { return No; }
};

} // namespace GenApi
