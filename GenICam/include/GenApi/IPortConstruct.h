// SPDX-License-Identifier: Apache-2.0
// Giving a port node its implementation.
#pragma once

#include <GenApi/IPort.h>

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

} // namespace GenApi
