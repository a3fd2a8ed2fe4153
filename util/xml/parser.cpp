#include "util/xml/arena.h"
#include "util/xml/builder.h"
#include "util/xml/element.h"

#include <fstream>
#include <iterator>
#include <utility>

namespace tvw::util::xml {

namespace {

ResourceLoader& resourceLoader()
{
    static ResourceLoader loader;
    return loader;
}

bool readBytes(const std::string& path, std::string& out)
{
    if (path.starts_with(':')) {
        return resourceLoader() && resourceLoader()(path, out);
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return false;
    }
    out.assign(std::istreambuf_iterator<char>(file), {});
    return !file.bad();
}

} // namespace

void setResourceLoader(ResourceLoader loader)
{
    resourceLoader() = std::move(loader);
}

int Element::parse(std::string_view text)
{
    if (!ownsArena_) {
        forget();
        return Builder(*arena_).build(text, *this);
    }
    // The text may lie in the memory that is given back: build first.
    Element fresh;
    const int result = Builder(fresh.arena()).build(text, fresh);
    release();
    take(fresh);
    return result;
}

int Element::loadFile(const std::string& path)
{
    clear();
    std::string content;
    return readBytes(path, content) ? parse(content) : code::fileUnreadable;
}

} // namespace tvw::util::xml
