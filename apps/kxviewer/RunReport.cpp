// SPDX-License-Identifier: Apache-2.0
#include "RunReport.h"

#include "Counted.h"

#include <unistd.h>

#include <ctime>
#include <fstream>
#include <string>

namespace
{

double Seconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Since the kernel made the process, so that loading the libraries counts too; to a hundredth of a second.
double SecondsOfProcess()
{
    std::ifstream file("/proc/self/stat");
    std::string text;
    std::getline(file, text, ')'); // the name may hold blanks
    constexpr int kFieldsBehindName = 20;
    for (int i = 0; i < kFieldsBehindName; ++i)
        file >> text;
    return Seconds(CLOCK_BOOTTIME) - std::stod(text) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

} // namespace

QString RunReport::Text() const
{
    const double dRun = SecondsOfProcess();
    return QString("%1 acquired, %2 lost, %3 incomplete, %4; window after %5 s, first "
                   "painted after %6 s; %7 s of processor time in %8 s")
        .arg(QString::fromStdString(KxApps::Counted(m_statistics.nDelivered, "image")))
        .arg(LostImages(m_statistics))
        .arg(m_statistics.nIncomplete)
        .arg(QString::fromStdString(KxApps::Counted(m_nPainted, "paint")))
        .arg(m_firstWindow.value_or(-1), 0, 'f', 2)
        .arg(m_firstPaint.value_or(-1), 0, 'f', 2)
        .arg(Seconds(CLOCK_PROCESS_CPUTIME_ID), 0, 'f', 2)
        .arg(dRun, 0, 'f', 2);
}

void RunReport::NoteWindow()
{
    if (!m_firstWindow)
        m_firstWindow = SecondsOfProcess();
}

void RunReport::OnCallback(KxApi::IKxCallbackParamBase* pParam)
{
    if (pParam->GetCallbackType() != KxApi::KxGUICallbackType_Drawing)
        return;
    ++m_nPainted;
    m_paints.Add(0);
    if (!m_firstPaint)
        m_firstPaint = SecondsOfProcess();
}
