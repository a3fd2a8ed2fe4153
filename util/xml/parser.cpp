#include "util/file.h"
#include "util/xml/arena.h"
#include "util/xml/builder.h"
#include "util/xml/element.h"

#include <optional>
#include <utility>

namespace tvw::util::xml {

namespace {

ResourceLoader& resourceLoader()
{
    static ResourceLoader loader;
    return loader;
}

std::optional<std::string> contentOf(const std::string& path)
{
    if (path.starts_with(':')) {
        std::string content;
        const bool isFound = resourceLoader() && resourceLoader()(path, content);
        return isFound ? std::optional(std::move(content)) : std::nullopt;
    }
    Result<std::string> content = readFile(path);
    return content ? std::optional(*std::move(content)) : std::nullopt;
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
    const std::optional<std::string> content = contentOf(path);
    return content ? parse(*content) : code::fileUnreadable;
}

} // namespace tvw::util::xml
