// SPDX-License-Identifier: Apache-2.0
#include <GenApi/INode.h>
#include <GenApi/Pointer.h>

#include <iterator>

namespace GenApi
{

GenICam::gcstring GetInterfaceName(IBase* pBase)
{
    // in the order of EInterfaceType
    static const char* const kNames[] = {"IValue",    "IBase",        "IInteger",   "IBoolean",
                                         "ICommand",  "IFloat",       "IString",    "IRegister",
                                         "ICategory", "IEnumeration", "IEnumEntry", "IPort"};
    static_assert(std::size(kNames) == intfIPort + 1, "one name per interface");
    const INode* const node = dynamic_cast<INode*>(pBase);
    return node != nullptr ? kNames[node->GetPrincipalInterfaceType()] : "";
}

} // namespace GenApi
