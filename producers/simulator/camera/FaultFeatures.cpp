// SPDX-License-Identifier: Apache-2.0
// What can go wrong with a camera, on demand.

#include "Camera.h"
#include "Features.h"

namespace KxSim
{
namespace
{

void DescribeFault(const CCameraModel&, CFeatureList& list)
{
    list.Category("KxFaultControl", "What goes wrong");
    const auto number = [](const char* name, const char* tip, const char* max) {
        return Integer(name, tip).Custom().Guru().Range("0", max).NotStored();
    };
    list.Add(number("KxFaultLoseEvery", "Each image of this number is lost on its way; 0 for none", "65535"));
    list.Add(number("KxFaultIncompleteEvery",
                    "Of each image of this number only the upper half comes; 0 for none", "65535"));
    list.Add(number("KxFaultLateEvery", "Each image of this number comes late; 0 for none", "65535"));
    list.Add(number("KxFaultLateBy", "How late", "60000").Unit("ms").Default(500));
    list.Add(String("KxFaultFeature", "Feature whose register can be neither read nor written; none if empty")
                 .Custom()
                 .Guru()
                 .NotStored());
    list.Add(
        number("KxFaultReplugAfter", "When an unplugged camera is plugged in again; 0 for never", "3600000")
            .Unit("ms"));
    list.Add(Command("KxFaultUnplug", "Unplugs the camera").Custom().Guru());
}

void BindFault(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    map.At("KxFaultFeatureReg").afterWrite = [&](size_t) {
        const std::string name = map.GetText("KxFaultFeatureReg");
        const std::string full = CFeatureList::RegisterOf(name);
        if (!name.empty() && (!map.Has(full) || name == "KxFaultFeature"))
            Fail(GenTL::GC_ERR_INVALID_VALUE, "There is no feature '%s' that could fail", name.c_str());
        camera.SetFailingRegister(name.empty() ? nullptr : &map.At(full));
    };
    map.At("KxFaultUnplugReg").afterWrite = [&](size_t) {
        map.SetInteger("KxFaultUnplugReg", 0);
        camera.Unplug(std::chrono::milliseconds(map.GetInteger("KxFaultReplugAfterReg")));
    };
}

} // namespace

const CFeatureGroup kFaultFeatures = {DescribeFault, BindFault};

void CCamera::CheckAccess(uint64_t address) const
{
    if (!IsStillPlugged())
        Fail(GenTL::GC_ERR_IO, "Camera '%s' is unplugged", m_id.c_str());
    const CRegister* const failing = m_failingRegister;
    if (failing && address >= failing->address && address < failing->address + failing->bytes.size())
        Fail(GenTL::GC_ERR_IO, "Camera '%s' does not answer at 0x%llx ('%s')", m_id.c_str(),
             static_cast<unsigned long long>(address), failing->name.c_str());
}

void CCamera::Unplug(std::chrono::milliseconds replugAfter)
{
    m_isPlugged = false;
    m_replugTime = replugAfter.count() > 0 ? Clock::now() + replugAfter : Clock::time_point::max();
    m_isLost = m_listener != nullptr; // whoever has it open has to open it anew
    StopAcquisition();
    if (m_listener)
        m_listener->OnLost();
}

bool CCamera::IsStruck(const char* faultRegister, uint64_t image)
{
    const auto every = static_cast<uint64_t>(Registers().GetInteger(faultRegister));
    return every != 0 && (image + 1) % every == 0;
}

} // namespace KxSim
