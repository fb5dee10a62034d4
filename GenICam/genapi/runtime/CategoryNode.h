// SPDX-License-Identifier: Apache-2.0
// A category of features.
#pragma once

#include "runtime/Node.h"

#include <GenApi/ICategory.h>

#include <map>

namespace KxGenApi
{

class CategoryNode final : public Node, public ICategory
{
public:
    using Node::Node;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfICategory; }
    INode* GetNode() override { return this; }
    EVisibility GetVisibility() const override;
    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return true; }
    void GetFeatures(FeatureList_t& Features) const override;

protected:
    EAccessMode ComputeAccessMode() const override;

private:
    EVisibility FindVisibility(std::map<const CategoryNode*, EVisibility>& known) const;
};

} // namespace KxGenApi
