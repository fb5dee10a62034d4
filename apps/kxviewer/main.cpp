// SPDX-License-Identifier: Apache-2.0
#include "Appearance.h"
#include "DescriptionViewer.h"
#include "Display.h"
#include "ErrorLog.h"
#include "MainWindow.h"
#include "ProgramReference.h"
#include "ViewerSettings.h"

#include <CLI/CLI.hpp>

#include <QApplication>
#include <QFile>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>

using namespace KxApi;

namespace
{

// Exit codes, as told in the help text.
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr uint64_t kPictureImages = 60; // what --screenshot waits for when nothing else is said
constexpr int kLastPaintMs = 200;       // the last image reaches the screen within this time
constexpr int kNoImageMs = 10000;       // a run that waits for images gives up

struct Options
{
    bool list = false;
    bool first = false;
    bool report = false;
    bool reset = false;
    bool dark = false;
    std::string language;
    std::string settingsFile;
    std::string device;
    std::string nodemap;
    uint64_t images = 0;
    std::string pictures;
    std::vector<std::string> settings;

    bool Ends() const { return images > 0 || !pictures.empty(); }
};

void AddOptions(CLI::App& program, Options& options)
{
    program.add_flag("--list", options.list, "Lists the cameras and ends");
    program.add_option("--device", options.device,
                       "Camera to open: ID, user-defined name, serial number or model");
    program.add_flag("--first", options.first, "Opens the first camera, instead of asking for one");
    program
        .add_option("--set", options.settings, "NAME=VALUE set before the start; may be given several times")
        ->take_all();
    program.add_option("--frames", options.images, "Ends after so many images")->check(CLI::PositiveNumber);
    program.add_option(
        "--screenshot", options.pictures,
        "Saves pictures of the windows into this folder, then ends; after 60 images, or those of "
        "--frames");
    program.add_option("--nodemap", options.nodemap,
                       "Shows the features of a description file, plain or zipped, without a camera");
    program.add_flag("--dark", options.dark, "Dark colours; without it those chosen last");
    program.add_option("--language", options.language, "en or de; without it the user's language")
        ->check(CLI::IsMember({"en", "de"}));
    program.add_option("--settings", options.settingsFile,
                       "File for what is remembered from run to run, in place of the user's");
    program.add_flag("--reset", options.reset,
                     "Forgets what was remembered: layout, colours, last camera and folders; saved feature "
                     "sets stay");
    program.add_flag("--report", options.report,
                     "Tells at the end what was acquired and painted and what it cost");
}

void PrintCameras(const KxApps::Cameras& cameras)
{
    for (const KxApps::Camera& camera : cameras.All())
        std::cout << camera.pInfo->GetID() << "  " << camera.pInfo->GetDisplayName() << "  ["
                  << KxApps::AccessStatusName(camera.pInfo->GetAccessStatus()) << "]\n";
}

void SavePictures(MainWindow& window, const std::string& folder)
{
    for (const QString& strPath : window.SavePictures(QString::fromStdString(folder)))
        std::cout << "saved " << strPath.toStdString() << "\n";
}

int Fail(const std::string& text)
{
    KxApps::LogError("kxviewer " KX_VERSION, text);
    std::cerr << "kxviewer: " << text << "\n";
    return kFailed;
}

// A run that was asked to end by itself: after its images, or when none comes any more.
void EndByItself(MainWindow& window, const Options& options)
{
    QObject::connect(&window, &MainWindow::Ended, [&](bool bComplete) {
        QTimer::singleShot(kLastPaintMs, [&window, &options, bComplete] {
            try {
                if (!options.pictures.empty())
                    SavePictures(window, options.pictures);
                QApplication::exit(bComplete ? 0 : Fail("the acquisition broke off"));
            } catch (const GenICam::GenericException& e) {
                QApplication::exit(Fail(e.GetDescription()));
            }
        });
    });
    auto* const pWatch = new QTimer(&window);
    QObject::connect(pWatch, &QTimer::timeout, [&window, nLast = uint64_t{0}]() mutable {
        const uint64_t nCome = window.GetImageCount();
        if (nCome == nLast)
            QApplication::exit(Fail("no image came within " + std::to_string(kNoImageMs) + " ms"));
        nLast = nCome;
    });
    pWatch->start(kNoImageMs);
}

// Runs that end by themselves have nobody who could choose.
bool IsChosenByUser(const Options& options)
{
    return options.device.empty() && !options.first && !options.Ends();
}

// Opens the camera that the command line asks for as soon as it is known, and then leaves the search alone.
class Opening
{
public:
    Opening(MainWindow& window, KxApps::Cameras& cameras, const CameraSearch& search, const Options& options)
        : m_window(window)
        , m_cameras(cameras)
        , m_search(search)
        , m_options(options)
    {}

    void OnSearched()
    {
        if (m_bDone)
            return;
        const KxApps::Camera* const pCamera = Known();
        try {
            if (!pCamera && !m_search.IsFinished())
                return;
            m_bDone = true;
            Open(pCamera ? *pCamera : AskedFor());
        } catch (const GenICam::GenericException& e) {
            m_window.Tell(QString::fromUtf8(e.GetDescription()));
            if (m_options.Ends())
                QApplication::exit(Fail(e.GetDescription()));
            else
                ShowError(&m_window, MainWindow::tr("The camera can't be opened."), e);
        }
    }

private:
    // The camera, null as long as it isn't sure which it is: an ID is unique, a simulated camera is always
    // the first one, and all else is known at the end of the search only.
    const KxApps::Camera* Known()
    {
        m_all = m_cameras.All();
        const auto found = std::find_if(m_all.begin(), m_all.end(), [&](const KxApps::Camera& camera) {
            return m_options.device.empty()
                       ? KxApps::Cameras::IsSimulated(camera) && KxApps::Cameras::CanBeControlled(camera)
                       : camera.pInfo->GetID() == m_options.device.c_str();
        });
        return found == m_all.end() ? nullptr : &*found;
    }
    // With all searches over. Raises what says why there is none.
    KxApps::Camera AskedFor() const
    {
        return m_options.device.empty() ? m_cameras.First() : m_cameras.Find(m_options.device);
    }
    void Open(const KxApps::Camera& camera)
    {
        m_window.Open(camera, m_options.settings);
        m_window.Start(!m_options.Ends()      ? kKxEndless
                       : m_options.images > 0 ? m_options.images
                                              : kPictureImages);
    }

    MainWindow& m_window;
    KxApps::Cameras& m_cameras;
    const CameraSearch& m_search;
    const Options& m_options;
    std::vector<KxApps::Camera> m_all;
    bool m_bDone = false;
};

int Show(KxApps::Cameras& cameras, const Options& options)
{
    RunReport report;
    CameraSearch search(cameras);
    // What a run by itself left behind in the user's own settings would surprise.
    MainWindow window(cameras, search, report, !options.Ends() || !options.settingsFile.empty());
    Opening opening(window, cameras, search, options);
    if (options.Ends())
        EndByItself(window, options);
    if (IsChosenByUser(options))
        QObject::connect(
            &search, &CameraSearch::ProducersOpened, &window, [&] { window.Choose(options.settings); },
            Qt::QueuedConnection);
    else
        QObject::connect(&search, &CameraSearch::SystemSearched, &window, [&] { opening.OnSearched(); });
    window.show();
    search.Start();
    const int nResult = QApplication::exec();
    window.hide();
    if (options.report)
        std::cout << report.Text().toStdString() << "\n";
    return nResult;
}

void UseSettings(const Options& options)
{
    if (!options.settingsFile.empty())
        ViewerSettings::UseFile(QString::fromStdString(options.settingsFile));
    if (options.reset)
        QFile::remove(ViewerSettings::File());
    SetLanguage(QString::fromStdString(options.language));
    if (options.dark || ((!options.Ends() || !options.settingsFile.empty()) &&
                         ViewerSettings().value("layout/dark").toBool()))
        SetDark(true);
}

int Run(int argc, char** argv)
{
    Options options;
    CLI::App program("Shows the live image of a camera", "kxviewer");
    program.footer("Exit code: 0 done, 1 failed (one line on standard error tells why), 2 wrong usage");
    program.set_version_flag("--version", KX_VERSION);
    AddOptions(program, options);
    if (KxApps::AnswerReference(argc, argv, program))
        return 0;
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return program.exit(e) == 0 ? 0 : kWrongUsage;
    }
    if (options.list) {
        PrintCameras(KxApps::Cameras());
        return 0;
    }
    const std::unique_ptr<QApplication> application = MakeApplication(argc, argv);
    UseSettings(options);
    if (!options.nodemap.empty())
        return ShowDescription(options.nodemap, options.pictures);
    KxApps::Cameras cameras{KxApps::Cameras::Later()};
    return Show(cameras, options);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return Run(argc, argv);
    } catch (const GenICam::GenericException& e) {
        return Fail(e.GetDescription());
    } catch (const std::exception& e) {
        return Fail(e.what());
    }
}
