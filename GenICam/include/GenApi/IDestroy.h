// SPDX-License-Identifier: Apache-2.0
// Giving back what a factory made.
#pragma once

#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

namespace GenApi
{

/// Face of an object that deletes itself, such as a node map.
struct GENAPI_DECL_ABSTRACT IDestroy
{
    /// Deletes the object; no pointer to it or to what it owns may be used afterwards.
    virtual void Destroy() = 0;

protected:
    ~IDestroy() = default;
};

} // namespace GenApi
