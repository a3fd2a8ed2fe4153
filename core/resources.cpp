#include "core/resources.h"

#include "unidevice/xml_file_manager.h"
#include "util/xml/element.h"

#include <QDirIterator>
#include <QFile>

#include <algorithm>

// The resource library registers itself by a call, since nothing else of it is referred to.
inline void initEmbeddedData() { Q_INIT_RESOURCE(rigstage); }

namespace tvw::rgs::core {

void installResourceLoader()
{
    initEmbeddedData();
    util::xml::setResourceLoader(&readResource);
    unidevice::setResourceLister(&listResources);
}

bool readResource(const std::string& path, std::string& out)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    out = file.readAll().toStdString();
    return true;
}

std::vector<std::string> listResources(const std::string& folder, std::string_view pattern)
{
    std::vector<std::string> found;
    const QString wanted = QString::fromUtf8(pattern.data(), static_cast<int>(pattern.size()));
    QDirIterator at(QString::fromStdString(folder), {wanted}, QDir::Files);
    while (at.hasNext())
        found.push_back(at.next().toStdString());
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace tvw::rgs::core
