// SPDX-License-Identifier: Apache-2.0

#include "FormatTable.h"

#include <KxApi_TL/IKxPixelComponent.h>

#include <map>
#include <string>

namespace KxApi
{
namespace
{

constexpr const char* kComponentNames[] = {"",  "Mono", "R", "G", "B", "Gr", "Gb", "Y",          "Cb",  "Cr",
                                           "U", "V",    "a", "W", "A", "B",  "C",  "Confidence", "Data"};
static_assert(std::size(kComponentNames) == KxPixelComponent_Data + 1);

constexpr const char* kAngles[] = {"", "0", "45", "90", "135"};
static_assert(std::size(kAngles) == KxPolarization_135 + 1);

class CKxPixelComponentInfo final : public IKxPixelComponentInfo
{
public:
    explicit CKxPixelComponentInfo(EKxPixelComponentType_t eType)
        : m_type(eType)
    {}

    EKxPixelComponentType_t GetType() const override { return m_type; }
    EKxPixelComponent_t GetComponent() const override
    {
        return static_cast<EKxPixelComponent_t>(m_type >> 24);
    }
    size_t GetEffectiveBits() const override { return m_type >> 16 & 0xFF; }
    EKxPolarization_t GetPolarization() const override
    {
        return static_cast<EKxPolarization_t>(m_type & 0xFF);
    }
    EKxPixelNumber_t GetNumber() const override { return static_cast<EKxPixelNumber_t>(m_type >> 8 & 0xFF); }

    GenICam::gcstring GetName() const override
    {
        const std::string component = kComponentNames[GetComponent()];
        if (GetPolarization() == KxPolarization_None)
            return component.c_str();
        const std::string angle = kAngles[GetPolarization()];
        return (GetComponent() == KxPixelComponent_Mono ? angle : component + "_" + angle).c_str();
    }

private:
    EKxPixelComponentType_t m_type;
};

using CInfoMap = std::map<EKxPixelComponentType_t, CKxPixelComponentInfo>;

CInfoMap MakeInfos()
{
    CInfoMap infos;
    for (const Detail::CPixelFormatRow& row : Detail::kFormats) {
        const size_t period = Detail::kMosaics[row.mosaic].period;
        for (size_t k = 0; k < row.componentCount; ++k) {
            for (size_t cell = 0; cell < period * period; ++cell) {
                const EKxPixelComponentType_t type =
                    Detail::ComponentType(row, k, cell % period, cell / period);
                infos.emplace(type, CKxPixelComponentInfo(type));
            }
        }
    }
    return infos;
}

} // namespace

const IKxPixelComponentInfo* GetIKxPixelComponentInfo(EKxPixelComponentType_t eType)
{
    static const CInfoMap infos = MakeInfos();
    const auto place = infos.find(eType);
    return place == infos.end() ? nullptr : &place->second;
}

} // namespace KxApi
