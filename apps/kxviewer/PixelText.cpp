// SPDX-License-Identifier: Apache-2.0
#include "PixelText.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxPixelComponent.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

using namespace KxApi;

namespace
{

IKxPixelComponent& ComponentsAt(IKxImage& image, QPoint pixel)
{
    return *image.GetIKxPixelComponentValue(static_cast<size_t>(pixel.x()), static_cast<size_t>(pixel.y()));
}

QString NameOf(EKxPixelComponentType_t eType)
{
    const IKxPixelComponentInfo* const pInfo = GetIKxPixelComponentInfo(eType);
    return pInfo ? QString::fromUtf8(pInfo->GetName().c_str()) + "=" : QString();
}

} // namespace

QStringList PixelValues(IKxImage& image, QPoint pixel)
{
    const IKxPixelComponent& components = ComponentsAt(image, pixel);
    QStringList values;
    for (size_t k = 0; k < components.GetComponentCount(); ++k)
        values += QString::number(components.GetValue(k));
    return values;
}

QString PixelText(IKxImage& image, QPoint shown, QPoint pixel)
{
    QString strPlace = QString("(%1, %2)").arg(shown.x()).arg(shown.y());
    try {
        const IKxPixelFormatInfo* const pFormat = GetIKxPixelFormatInfo(image.GetImagePixelFormat());
        QStringList values = PixelValues(image, pixel);
        if (pFormat && !pFormat->IsSingleComponent())
            for (int k = 0; k < values.size(); ++k)
                values[k].prepend(NameOf(ComponentsAt(image, pixel).GetType(static_cast<size_t>(k))));
        return QString("%1  %2  %3")
            .arg(strPlace, pFormat ? QString::fromUtf8(pFormat->GetName().c_str()) : QString(),
                 values.join(", "));
    } catch (const GenICam::GenericException&) {
        return strPlace;
    }
}
