// SPDX-License-Identifier: Apache-2.0
// A pointer of the program's own at nodes and node maps.
#pragma once

#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

namespace GenApi
{

typedef void* UserData_t;

/// Each node and each node map carries one pointer for its users, null at first. Any thread.
struct GENAPI_DECL_ABSTRACT IUserData
{
    virtual UserData_t GetUserData() const = 0;
    /// Returns the pointer of before.
    virtual UserData_t SetUserData(UserData_t userData) = 0;

protected:
    ~IUserData() = default;
};

} // namespace GenApi
