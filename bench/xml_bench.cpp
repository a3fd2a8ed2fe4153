/// Reading and writing a large profile, beside pugixml.
#include "bench/compare.h"
#include "util/xml/element.h"

#include <pugixml.hpp>

#include <algorithm>
#include <string>

namespace {

using tvw::util::xml::Element;

constexpr std::size_t kDocumentSize = 10 * 1024 * 1024; ///< [bytes]

/// A profile such as a tool with very many items writes.
std::string profile()
{
    std::string text = "<?xml version=\"1.0\"?>\n<profile name=\"car\" version=\"2\">\n";
    for (int id = 0; text.size() < kDocumentSize; ++id) {
        if (id % 40 == 0) {
            text += id == 0 ? "\t<group label=\"Launch\">\n"
                            : "\t</group>\n\t<group label=\"Tyres\">\n";
        }
        text += "\t\t<item id=\"" + std::to_string(id) +
                "\" type=\"blob\" label=\"Initital Velocity (% of max)\">AAAAAAAAAAA=</item>\n";
    }
    return text + "\t</group>\n</profile>\n";
}

bool equal(const Element& ours, const pugi::xml_node& peer);

bool equalAttributes(const Element& ours, const pugi::xml_node& peer)
{
    std::size_t i = 0;
    for (const pugi::xml_attribute& attribute : peer.attributes()) {
        if (i == ours.attributeCount() || ours.attributeAt(i).key != attribute.name() ||
            ours.attributeAt(i).value != attribute.value()) {
            return false;
        }
        ++i;
    }
    return i == ours.attributeCount();
}

bool equalChildren(const Element& ours, const pugi::xml_node& peer)
{
    std::size_t i = 0;
    for (const pugi::xml_node& child : peer.children()) {
        if (i == ours.childCount() || !equal(ours.childAt(i), child)) {
            return false;
        }
        ++i;
    }
    return i == ours.childCount();
}

bool equal(const Element& ours, const pugi::xml_node& peer)
{
    return ours.name() == (peer.type() == pugi::node_pcdata ? peer.value() : peer.name()) &&
           equalAttributes(ours, peer) && equalChildren(ours, peer);
}

struct StringWriter final : pugi::xml_writer
{
    std::string text;
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
};

void profile_parse_vs_pugixml(benchmark::State& state)
{
    const std::string text = profile();
    {
        Element ours;
        pugi::xml_document peer;
        if (ours.parse(text) != 0 || !peer.load_buffer(text.data(), text.size()) ||
            !equal(ours, peer.document_element())) {
            state.SkipWithError("the trees differ");
            return;
        }
    }
    tvw::bench::compare(
        state,
        [&] {
            pugi::xml_document document;
            benchmark::DoNotOptimize(document.load_buffer(text.data(), text.size()));
        },
        [&] {
            Element root;
            benchmark::DoNotOptimize(root.parse(text));
        });
}
BENCHMARK(profile_parse_vs_pugixml);

void profile_write_vs_pugixml(benchmark::State& state)
{
    const std::string text = profile();
    Element ours;
    pugi::xml_document peer;
    if (ours.parse(text) != 0 || !peer.load_buffer(text.data(), text.size()) ||
        ours.toString() != text) {
        state.SkipWithError("what is written is not what was read");
        return;
    }
    const auto writePeer = [&peer] {
        StringWriter writer;
        peer.save(writer, "\t");
        return std::move(writer.text);
    };
    if (writePeer() != text) {
        state.SkipWithError("the peer writes another text");
        return;
    }
    tvw::bench::compare(
        state, [&] { benchmark::DoNotOptimize(writePeer()); },
        [&] { benchmark::DoNotOptimize(ours.toString()); });
}
BENCHMARK(profile_write_vs_pugixml);

} // namespace
