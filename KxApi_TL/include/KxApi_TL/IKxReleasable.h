// SPDX-License-Identifier: Apache-2.0
// What a factory returned is given back by this.
#pragma once

namespace KxApi
{

/// An object that its holder gives back instead of deleting it.
struct IKxReleasable
{
    /// Gives the object back; it must not be used afterwards.
    virtual void Release() = 0;

protected:
    ~IKxReleasable() = default;
};

} // namespace KxApi
