// SPDX-License-Identifier: Apache-2.0
// Giving a port node its implementation.
#pragma once

#include <GenApi/IPort.h>
#include <GenApi/IPortStacked.h>

namespace GenApi
{

/// A port node, as those see it who connect something to it. Any thread.
struct GENAPI_DECL_ABSTRACT IPortConstruct : virtual public IPort
{
    /// Connects the implementation, or disconnects it with null. Not owned; it must outlive the connection.
    /// Invalidates and fires the port and all that depends on it.
    virtual void SetPortImpl(IPort* pPort) = 0;

    /// Whether the byte order of what passes this port is to be swapped.
    virtual EYesNo GetSwapEndianess() = 0;
};

/// The same for an implementation that takes many writes in one go.
struct GENAPI_DECL_ABSTRACT IPortStackedConstruct
{
    virtual void SetPortImpl(IPortStacked* pPort) = 0;
    virtual EYesNo GetSwapEndianess() = 0;

    virtual ~IPortStackedConstruct() {}
};

} // namespace GenApi
