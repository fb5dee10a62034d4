// SPDX-License-Identifier: Apache-2.0
// Saves images without a window: the program fetches one after the other, and writes each as it is, and as a
// picture in the formats that anybody can open.
//
// saving [IMAGES], 3 when nothing is said
#include "FirstCamera.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_IP/KxApi_IP.h>
#include <KxApi_TL/IKxImageBuffer.h>

#include <string>

using namespace KxApi;

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    const CKxAutoPtr<IKxFilerReleasable> filer(CreateIKxFiler(KxFilerType_StillImage));
    const CKxAutoPtr<IKxConverterReleasable> converter(CreateIKxConverter(KxConverterType_PixelFormat));
    const CKxAutoPtr<IKxImageBufferReleasable> picture(CreateIKxImageBuffer(nullptr));
    converter->SetDestinationPixelFormat(KxPixelFormat_RGB8);

    Samples::FirstCamera camera;
    IKxStream& stream = camera.Stream();
    const uint64_t nImages = argc > 1 ? Samples::ImagesOf(argc, argv) : 3;
    stream.StartAcquisition(nullptr, nImages); // without a receiver: FetchImage gives the images
    for (uint64_t n = 0; n < nImages; ++n) {
        const CKxAutoPtr<IKxStreamImageReleasable> image(stream.FetchImage(5000));
        if (!image)
            throw RUNTIME_EXCEPTION("no image came within five seconds");
        const std::string strName = "image" + std::to_string(image->GetFrameID());
        // Any pixel format, with all bits.
        filer->Save(image.Get(), KxStillImageFileType_Raw, (strName + ".kxraw").c_str());
        // For other programs; the filer converts nothing by itself.
        converter->Convert(image.Get(), picture.Get());
        filer->Save(picture->GetIKxImage(), KxStillImageFileType_Png, (strName + ".png").c_str());
        std::cout << "saved " << strName << ".kxraw and " << strName << ".png\n";
    } // the image goes back to the stream here
    stream.StopAcquisition();
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}
