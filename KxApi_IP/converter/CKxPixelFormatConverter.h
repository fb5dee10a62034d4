// SPDX-License-Identifier: Apache-2.0
// The converter that CreateIKxConverter makes.
#pragma once

#include "CConversionPlan.h"
#include "CConverterSettings.h"
#include "CWorkers.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxSDKCommon/KxMutex.h>

#include <atomic>
#include <memory>

namespace KxApi
{

class CKxPixelFormatConverter final : public IKxConverterReleasable
{
public:
    CKxPixelFormatConverter() = default;
    CKxPixelFormatConverter(const CKxPixelFormatConverter&) = delete;
    CKxPixelFormatConverter& operator=(const CKxPixelFormatConverter&) = delete;
    virtual ~CKxPixelFormatConverter() = default;

    void Convert(IKxImage* pSource, IKxImageBuffer* pTarget) override;
    GenApi::INodeMap* GetINodeMap() override { return m_settings.GetINodeMap(); }
    void SetConversionOption(int nThreads) override;
    EKxPixelFormatNamingConvention_t GetDestinationPixelFormat() const override;
    void SetDestinationPixelFormat(EKxPixelFormatNamingConvention_t ePixelFormat) override;
    bool GetReverseY() const override;
    void SetReverseY(bool bReverseY) override;
    EKxBayerInterpolationMethod_t GetBayerInterpolationMethod() const override;
    void SetBayerInterpolationMethod(EKxBayerInterpolationMethod_t eMethod) override;
    double GetGamma() const override;
    void SetGamma(double dGamma) override;
    void SetAutoDestination(bool bAuto) override { m_autoDestination = bAuto; }
    bool GetAutoDestination() const override { return m_autoDestination; }
    int GetConversionOption() const override { return m_nThreads; }
    EKxBitExpansionMode_t GetBitExpansionMode() const override;
    void SetBitExpansionMode(EKxBitExpansionMode_t eMode) override;
    bool IsConvertible(EKxPixelFormatNamingConvention_t eSource,
                       EKxPixelFormatNamingConvention_t eDestination) const override;

    EKxPolarizationImageTransformationMethod_t GetPolarizationImageTransformationMethod() const override;
    void
    SetPolarizationImageTransformationMethod(EKxPolarizationImageTransformationMethod_t eMethod) override;
    double GetPolarizationSpecifiedAngle() const override;
    void SetPolarizationSpecifiedAngle(double dAngle) override;
    EKxColorMapType_t GetColorMapType() const override;
    void SetColorMapType(EKxColorMapType_t eType) override;
    bool GetColorMapInversion() const override;
    void SetColorMapInversion(bool bInversion) override;
    int32_t GetColorMapPhase() const override;
    void SetColorMapPhase(int32_t nPhase) override;
    EKxPolarizationInterpolationMethod_t GetPolarizationSpecifiedAngleInterpolationMethod() const override;
    void
    SetPolarizationSpecifiedAngleInterpolationMethod(EKxPolarizationInterpolationMethod_t eMethod) override;
    bool GetADOLPDarkMode() const override;
    void SetADOLPDarkMode(bool bDarkMode) override;
    bool GetADOLPColorInversion() const override;
    void SetADOLPColorInversion(bool bInversion) override;
    int32_t GetADOLPColorPhase() const override;
    void SetADOLPColorPhase(int32_t nPhase) override;

    void Release() override { delete this; }

private:
    const Detail::CDestinationFormat& DestinationFor(const Detail::CSourceFormat& source,
                                                     const Detail::CSettingValues& values) const;

    Detail::CConverterSettings m_settings;
    std::atomic<bool> m_autoDestination{false};
    std::atomic<int> m_nThreads{1};

    CKxMutex m_mutexConversion; // held for a whole conversion
    std::unique_ptr<Detail::CConversionPlan> m_pPlan KXGC_GUARDED_BY(m_mutexConversion);
    Detail::CWorkers m_workers KXGC_GUARDED_BY(m_mutexConversion);
};

} // namespace KxApi
