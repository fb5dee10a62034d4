// SPDX-License-Identifier: Apache-2.0
#include "runtime/Callbacks.h"

#include <mutex>
#include <unordered_map>

namespace KxGenApi
{
namespace
{

// A handle alone does not tell whether its callback still lives, so the living ones are listed.
struct Registry
{
    std::mutex lock; // innermost: nothing is taken while it is held
    std::unordered_map<GenApi::CallbackHandleType, GenApi::INode*> nodes;
};

Registry& TheRegistry()
{
    static Registry* const registry = new Registry; // outlives maps in static objects
    return *registry;
}

} // namespace

void RememberCallback(GenApi::CallbackHandleType handle, GenApi::INode& node)
{
    Registry& registry = TheRegistry();
    const std::lock_guard<std::mutex> guard(registry.lock);
    registry.nodes[handle] = &node;
}

void ForgetCallback(GenApi::CallbackHandleType handle)
{
    Registry& registry = TheRegistry();
    const std::lock_guard<std::mutex> guard(registry.lock);
    registry.nodes.erase(handle);
}

} // namespace KxGenApi

namespace GenApi
{

void Deregister(CallbackHandleType hCallback)
{
    INode* node = nullptr;
    {
        KxGenApi::Registry& registry = KxGenApi::TheRegistry();
        const std::lock_guard<std::mutex> guard(registry.lock);
        const auto found = registry.nodes.find(hCallback);
        if (found != registry.nodes.end())
            node = found->second;
    }
    if (node != nullptr)
        node->DeregisterCallback(hCallback);
}

} // namespace GenApi
