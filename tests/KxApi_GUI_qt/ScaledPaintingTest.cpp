// SPDX-License-Identifier: Apache-2.0
// Scaled painting beside the painter's own.
#include "ImageViewSupport.h"
#include "image/ScaledPainting_qt.h"

#include <QPainter>
#include <random>

namespace KxTest
{
namespace
{

using namespace KxApi;

TEST(ScaledPainting, GivesThePixelsOfDrawImage)
{
    std::minstd_rand random(1);
    const auto upTo = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const QImage::Format formats[] = {QImage::Format_Grayscale8, QImage::Format_Indexed8,
                                      QImage::Format_RGB888, QImage::Format_BGR888, QImage::Format_RGBX8888};
    for (int n = 0; n < 400; ++n) {
        CPreviewPicture picture{QImage(1 + upTo(n % 10 ? 300 : 6000), 1 + upTo(200), formats[n % 5]),
                                n % 2 == 0};
        picture.bSwapped &= picture.image.format() == QImage::Format_RGBX8888;
        for (qsizetype i = 0; i < picture.image.sizeInBytes(); ++i)
            picture.image.bits()[i] = static_cast<uchar>(random() >> 8);
        if (picture.image.format() == QImage::Format_Indexed8) {
            QVector<QRgb> vecTable(256);
            for (QRgb& nColor : vecTable)
                nColor = 0xFF000000 | static_cast<QRgb>(random());
            picture.image.setColorTable(vecTable);
        }
        const QPoint ptWidget(upTo(40), upTo(40));
        const QRect rcTarget(0, 0, 1 + upTo(n % 7 ? 500 : 5000), 1 + upTo(300));
        // What is shown of it: all, a part, or parts, as when windows lie above.
        QRegion rgShown(rcTarget);
        if (n % 3 != 0)
            rgShown &= QRect(upTo(rcTarget.width()), upTo(rcTarget.height()), 400, 200);
        if (n % 3 == 2)
            rgShown -= QRect(upTo(rcTarget.width()), upTo(rcTarget.height()), 50, 50);
        QImage own(rcTarget.size() + QSize(50, 50), QImage::Format_RGB32), bare(own.size(), own.format());
        own.fill(Qt::red);
        bare.fill(Qt::red);
        for (QImage* const pDevice : {&own, &bare}) {
            QPainter painter(pDevice);
            painter.translate(ptWidget);
            painter.setClipRegion(rgShown);
            if (pDevice == &own)
                DrawScaled(painter, rcTarget, picture, rgShown);
            else
                painter.drawImage(rcTarget, picture.Complete());
        }
        ASSERT_TRUE(own == bare) << n << ": " << picture.image.width() << " to " << rcTarget.width();
    }
}

} // namespace
} // namespace KxTest
