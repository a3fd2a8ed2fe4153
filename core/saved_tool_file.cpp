#include "core/saved_tool_file.h"

#include "util/file.h"
#include "util/huffman.h"

namespace tvw::rgs::core {

using util::xml::Element;

Result<Element> readSavedTools(const std::string& path)
{
    using Answer = Result<Element>;
    const Result<std::string> bytes = readFile(path);
    if (!bytes)
        return Answer::failure(bytes.reason());
    const Result<std::string> text = decompress(*bytes);
    if (!text)
        return Answer::failure(path + ": " + text.reason());
    Element record;
    if (record.parse(*text) != 0)
        return Answer::failure(path + ": not a whole XML text");
    if (record.name() != "RGT" && record.name() != "rgs" && record.name() != "RGT_Plugin")
        return Answer::failure(path + ": no tool record (its root is \"" +
                               std::string(record.name()) + "\")");
    if (record.name() == "RGT_Plugin")
        record.setAttribute("path", path);
    for (int i = 0; Element* const tool = record.findChild("RGT_Plugin", i); ++i)
        tool->setAttribute("path", path);
    return record;
}

std::vector<const Element*> toolRecordsOf(const Element& record)
{
    std::vector<const Element*> tools;
    if (record.name() == "RGT_Plugin")
        tools.push_back(&record);
    if (record.name() != "RGT" && record.name() != "rgs")
        return tools;
    const int count = static_cast<int>(record.childCount("RGT_Plugin"));
    for (int i = 0; i < count; ++i)
        tools.push_back(&record.child("RGT_Plugin", i));
    return tools;
}

} // namespace tvw::rgs::core
