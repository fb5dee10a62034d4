// SPDX-License-Identifier: Apache-2.0
// Measures on the live image by features alone: a line is drawn across it with its length in millimetres, the
// user may move it, and the program reads it back.
#include "FirstCamera.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>

#include <atomic>
#include <cmath>
#include <string>

using namespace KxApi;

constexpr double kMillimetresPerPixel = 0.05;

static void Set(GenApi::INodeMap& map, const char* szFeature, const std::string& strValue)
{
    GenApi::CValuePtr(map.GetNode(szFeature))->FromString(strValue.c_str());
}

// Of the first object; positions are parts of the image, so that they hold at every zoom.
static double Coordinate(GenApi::INodeMap& map, int nPoint, const char* szFeature)
{
    Set(map, "DrawingObjectSelector", "0");
    Set(map, "DrawingObjectPointSelector", std::to_string(nPoint));
    return GenApi::CFloatPtr(map.GetNode(szFeature))->GetValue();
}

static void DrawLine(GenApi::INodeMap& map)
{
    Set(map, "TextOfLengthUnit", "mm");
    Set(map, "PrecisionForLength", "2");
    for (const char* const szFeature : {"ConversionX", "ConversionY"})
        Set(map, szFeature, std::to_string(kMillimetresPerPixel));
    Set(map, "DrawingObjectsCount", "1");
    Set(map, "DrawingObjectSelector", "0");
    Set(map, "DrawingObjectType", "Line");
    Set(map, "DrawingObjectPointCount", "2");
    const char* const points[][2] = {{"0.25", "0.5"}, {"0.75", "0.5"}};
    for (int i = 0; i < 2; ++i) {
        Set(map, "DrawingObjectPointSelector", std::to_string(i));
        Set(map, "DrawingObjectPointX", points[i][0]);
        Set(map, "DrawingObjectPointY", points[i][1]);
    }
    Set(map, "DrawingObjectDisplayTextSelector", "Length");
    Set(map, "DrawingObjectEnableDisplayText", "true");
    Set(map, "DrawingItemType", "Select"); // the mouse moves objects
}

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    const CIKxWndPtrT<IKxImageDisplayWnd> window(CreateIKxWnd(KxWindowType_ImageDisplay));
    GenApi::INodeMap& map = *window->GetINodeMap();
    DrawLine(map);
    window->SetZoomMode(KxZoomMode_FitToTheWindow);
    window->Show(nullptr, KxWindowMode_Modaless);

    std::atomic<size_t> nWidth{0};
    std::atomic<size_t> nHeight{0};
    Samples::ForEachImage toWindow([&](IKxStreamImage& image) {
        nWidth = image.GetImageWidth();
        nHeight = image.GetImageHeight();
        window->RegisterIKxImage(&image);
    });
    Samples::FirstCamera camera; // made last, so that it ends first
    IKxStream& stream = camera.Stream();
    stream.StartAcquisition(&toWindow, Samples::ImagesOf(argc, argv));
    while (window->IsVisible() && stream.IsAcquiring())
        processEventGUI(false, 10);
    stream.StopAcquisition();

    const auto distance = [&](const char* szFeature, size_t nPixels) {
        return (Coordinate(map, 1, szFeature) - Coordinate(map, 0, szFeature)) * static_cast<double>(nPixels);
    };
    const double dLength =
        std::hypot(distance("DrawingObjectPointX", nWidth), distance("DrawingObjectPointY", nHeight));
    std::cout << "the line is " << dLength * kMillimetresPerPixel << " mm long\n"
              << stream.GetStatistics().nDelivered << " images\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}
