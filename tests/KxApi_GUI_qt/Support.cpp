// SPDX-License-Identifier: Apache-2.0
#include "Support.h"

#include <QApplication>
#include <QFileDialog>
#include <QTimer>
#include <chrono>
#include <cstring>
#include <thread>

namespace KxTest
{
namespace
{

// Here and not only in ctest's properties, so that the programs run by hand on a machine without a display.
[[maybe_unused]] const bool kHasPlatform =
    !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || qputenv("QT_QPA_PLATFORM", "offscreen");

} // namespace

ImageBufferPtr MakeImage(size_t nWidth, size_t nHeight, KxApi::EKxPixelFormatNamingConvention_t ePixelFormat,
                         unsigned char nValue)
{
    ImageBufferPtr pBuffer(KxApi::CreateIKxImageBuffer(nullptr));
    pBuffer->CreateBuffer(nWidth, nHeight, ePixelFormat, KxApi::KxMemoryInitialization_None);
    KxApi::IKxImage* const pImage = pBuffer->GetIKxImage();
    std::memset(pImage->GetImageBuffer(), nValue, pImage->GetImageLinePitch() * pImage->GetImageHeight());
    return pBuffer;
}

void Pump() { KxApi::processEventGUI(false, 0); }

bool PumpUntil(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    for (;;) {
        Pump();
        if (condition())
            return true;
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

QWidget* WidgetOf(KxApi::IKxWnd& window) { return static_cast<QWidget*>(window.GetWindowHandle()); }

std::string ErrorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const GenICam::GenericException& e) {
        return e.GetDescription();
    }
    return {};
}

std::string PlaceOfErrorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const GenICam::GenericException& e) {
        return e.GetSourceFileName();
    }
    return {};
}

int HammerRounds(int nDefault)
{
    const int nRounds = qEnvironmentVariableIntValue("KXAPI_HAMMER_ROUNDS");
    return nRounds > 0 ? nRounds : nDefault;
}

class CEventLog::CCallback final : public KxApi::IKxCallback
{
public:
    explicit CCallback(CEventLog& log)
        : m_log(log)
    {}
    void OnCallback(KxApi::IKxCallbackParamBase* pParam) override
    {
        {
            const std::lock_guard lock(m_log.m_mutex);
            m_log.m_vecTypes.push_back(pParam->GetCallbackType());
        }
        if (m_log.onEvent)
            m_log.onEvent(*pParam);
    }
    void Release() override
    {
        ++m_log.nReleased;
        delete this;
    }

private:
    CEventLog& m_log;
};

void* CEventLog::Watch(KxApi::IKxRegisterCallback& source)
{
    return source.RegisterCallback(new CCallback(*this));
}

std::vector<unsigned> CEventLog::Types() const
{
    const std::lock_guard lock(m_mutex);
    return m_vecTypes;
}

size_t CEventLog::Count(unsigned nType) const
{
    size_t nCount = 0;
    for (const unsigned n : Types())
        nCount += n == nType ? 1U : 0U;
    return nCount;
}

CThreads::CThreads(std::vector<std::function<void(unsigned)>> vecBodies)
{
    for (auto& body : vecBodies) {
        m_vecThreads.emplace_back([this, body = std::move(body)] {
            for (unsigned n = 0; !m_bStop; ++n) {
                body(n);
                // Locks are not fair: without a pause a thread of these could keep one for itself.
                std::this_thread::sleep_for(std::chrono::microseconds(50));
            }
        });
    }
}

CThreads::~CThreads()
{
    m_bStop = true;
    std::atomic<bool> bJoined{false};
    std::thread joiner([&] {
        for (std::thread& thread : m_vecThreads)
            thread.join();
        bJoined = true;
    });
    EXPECT_TRUE(PumpUntil([&] { return bJoined.load(); }));
    joiner.join();
}

CDialogAnswers::CDialogAnswers(std::vector<Answer> vecAnswers)
    : m_vecAnswers(std::move(vecAnswers))
{
    Poll();
}

CDialogAnswers::~CDialogAnswers() { EXPECT_EQ(m_nAnswered, m_vecAnswers.size()); }

void CDialogAnswers::Poll()
{
    if (m_nAnswered == m_vecAnswers.size())
        return;
    QTimer::singleShot(1, &m_objContext, [this] { Poll(); });
    QWidget* const pPopup = QApplication::activePopupWidget();
    QWidget* const pWidget = pPopup ? pPopup : QApplication::activeModalWidget();
    if (!pWidget || pWidget == m_pLast)
        return;
    m_pLast = pWidget;
    m_vecAnswers[m_nAnswered++](*pWidget);
}

CDialogAnswers::Answer CDialogAnswers::NameFile(const QString& strName, const char* szFilter)
{
    return [=](QWidget& dialog) {
        auto& fileDialog = dynamic_cast<QFileDialog&>(dialog);
        fileDialog.selectNameFilter(szFilter);
        fileDialog.selectFile(strName);
        QMetaObject::invokeMethod(&dialog, "accept", Qt::QueuedConnection);
    };
}

ImageWndPtr GuiTest::MakeImageWnd()
{
    return ImageWndPtr(KxApi::CreateIKxWnd(KxApi::KxWindowType_ImageDisplay));
}

void GuiTest::Show(KxApi::IKxWnd& window)
{
    window.Show(nullptr, KxApi::KxWindowMode_Modaless);
    Pump();
}

} // namespace KxTest
