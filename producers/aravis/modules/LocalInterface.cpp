// SPDX-License-Identifier: Apache-2.0
#include "modules/LocalInterface.h"

#include <algorithm>
#include <utility>

namespace KxAravis
{
namespace
{

/// An identifier without what would part it in lists and on command lines.
std::string IdOf(const char* technology, const std::string& arvId)
{
    std::string id = std::string(technology) + "_" + arvId;
    std::replace_if(
        id.begin(), id.end(), [](unsigned char c) { return !std::isgraph(c) || c == ',' || c == '='; }, '-');
    return id;
}

} // namespace

CLocalInterface::CLocalInterface(std::shared_ptr<CSystem> parent, KxProducer::CAdapterFacts facts,
                                 ArvInterface& arv)
    : CInterface(std::move(parent), std::move(facts))
    , m_arv(arv)
{
    DescribePort();
}

std::vector<CDeviceFacts> CLocalInterface::Find(uint64_t /*timeoutMs*/)
{
    const std::lock_guard<std::mutex> lock(m_arvMutex);
    arv_interface_update_device_list(&m_arv);
    std::vector<CDeviceFacts> found;
    const unsigned count = arv_interface_get_n_devices(&m_arv);
    for (unsigned i = 0; i < count; ++i) {
        CDeviceFacts facts;
        facts.technology = Facts().technology;
        facts.arvId = TextOf(arv_interface_get_device_id(&m_arv, i));
        facts.id = IdOf(KxProducer::TlType(facts.technology), facts.arvId);
        facts.vendor = TextOf(arv_interface_get_device_vendor(&m_arv, i));
        facts.model = TextOf(arv_interface_get_device_model(&m_arv, i));
        facts.serial = TextOf(arv_interface_get_device_serial_nbr(&m_arv, i));
        found.push_back(std::move(facts));
    }
    return found;
}

GPtr<ArvDevice> CLocalInterface::Connect(const CDeviceFacts& facts, GenTL::DEVICE_ACCESS_FLAGS /*access*/)
{
    const std::lock_guard<std::mutex> lock(m_arvMutex);
    CArvError error;
    GPtr<ArvDevice> device(arv_interface_open_device(&m_arv, facts.arvId.c_str(), &error));
    error.Check("Device '" + facts.id + "' can't be opened");
    if (!device)
        KxProducer::Fail(GenTL::GC_ERR_IO, "Device '%s' can't be opened", facts.id.c_str());
    return device;
}

} // namespace KxAravis
