// SPDX-License-Identifier: Apache-2.0
#include "Peer.h"

#include <arv.h>

#include <algorithm>
#include <stdexcept>

namespace Bench
{

namespace
{

void Check(GError* error)
{
    if (error == nullptr)
        return;
    const std::string text = error->message;
    g_error_free(error);
    throw std::runtime_error("Aravis: " + text);
}

ArvDevice* NewFakeDevice()
{
    GError* error = nullptr;
    ArvDevice* const device = arv_fake_device_new("BENCH", &error);
    Check(error);
    return device;
}

} // namespace

void PeerMap::Unref::operator()(void* object) const { g_object_unref(object); }

PeerMap::PeerMap(const std::string& xml, Device device)
    : m_device(device == Device::Memory ? NewFakeDevice() : nullptr)
    , m_map(arv_gc_new(static_cast<ArvDevice*>(m_device.get()), xml.data(), xml.size()))
{
    if (!m_map)
        throw std::runtime_error("Aravis cannot load the description");
    // What is compared are cached reads; the peer caches nothing unless it is told to.
    arv_gc_set_register_cache_policy(m_map.get(), ARV_REGISTER_CACHE_POLICY_ENABLE);
}

PeerMap::~PeerMap() = default;

ArvGcNode* PeerMap::GetNode(const char* name) const { return arv_gc_get_node(m_map.get(), name); }

size_t PeerMap::GetNodes(const std::vector<std::string>& names) const
{
    return static_cast<size_t>(std::count_if(names.begin(), names.end(), [this](const std::string& name) {
        return GetNode(name.c_str()) != nullptr;
    }));
}

int64_t PeerMap::GetInteger(ArvGcNode* feature)
{
    GError* error = nullptr;
    const int64_t value = arv_gc_integer_get_value(ARV_GC_INTEGER(feature), &error);
    Check(error);
    return value;
}

void PeerMap::SetFloat(ArvGcNode* feature, double value)
{
    GError* error = nullptr;
    arv_gc_float_set_value(ARV_GC_FLOAT(feature), value, &error);
    Check(error);
}

} // namespace Bench
