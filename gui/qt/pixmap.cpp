#include "gui/qt/pixmap.h"

#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace tvw::gui {

namespace {

constexpr int kLargestVector = 4096; ///< side of a vector image [pixels]

QString variant(const QString& path, const QString& suffix, const QString& extension)
{
    const QFileInfo info(path);
    return path.left(path.size() - info.suffix().size() - 1) + suffix + "." + extension;
}

QPixmap drawVector(const QString& path, double ratio)
{
    QSvgRenderer renderer(path);
    const QSize size = renderer.defaultSize().boundedTo(QSize(kLargestVector, kLargestVector));
    if (!renderer.isValid() || size.isEmpty())
        return {};
    QPixmap pixmap(static_cast<int>(std::lround(size.width() * ratio)),
                   static_cast<int>(std::lround(size.height() * ratio)));
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QPixmap loadRaster(const QString& path, double ratio)
{
    const QString dense = variant(path, QStringLiteral("@2x"), QFileInfo(path).suffix());
    const bool isDense = ratio > 1.0 && QFileInfo::exists(dense);
    QPixmap pixmap = QPixmap::fromImage(QImage(isDense ? dense : path));
    pixmap.setDevicePixelRatio(isDense ? 2.0 : 1.0);
    return pixmap;
}

} // namespace

QPixmap loadPixmap(const std::string& path, double devicePixelRatio)
{
    const QString file = QString::fromStdString(path);
    if (file.isEmpty())
        return {};
    const double ratio = std::max(devicePixelRatio, 1.0);
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix == QLatin1String("svg"))
        return drawVector(file, ratio);
    if (QFileInfo::exists(file))
        return loadRaster(file, ratio);
    const QString vector = variant(file, {}, QStringLiteral("svg"));
    return suffix == QLatin1String("png") && QFileInfo::exists(vector) ? drawVector(vector, ratio)
                                                                       : QPixmap();
}

QIcon loadIcon(const std::string& path)
{
    QIcon icon;
    for (const double ratio : {1.0, 2.0}) {
        const QPixmap pixmap = loadPixmap(path, ratio);
        if (!pixmap.isNull())
            icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace tvw::gui
