#include "tests/support/ground_meshes.h"
#include "util/base64.h"
#include "util/datachunk.h"
#include "util/mesh.h"
#include "util/xml/element.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace tvw {
namespace {

using util::xml::Element;
using util::xml::Tag;
using util::xml::TagWithData;

using Indices = std::vector<std::int32_t>;

/// One triangle whose numbers need all their digits, and an index list of its own.
CMesh triangle()
{
    CMesh mesh;
    mesh.vertex = {{0.1, -1e300, 3}, {1.0 / 3.0, 5e-324, -0.0}, {7, 8, 9}};
    mesh.texcoord = {{0.25, 0.5, 0}};
    mesh.face = {0, 1, 2};
    mesh.tface = {0, 0, 0};
    return mesh;
}

CMesh reread(const Element& element)
{
    CMesh mesh;
    mesh.read(element);
    return mesh;
}

TEST(Mesh, BoxHasItsCornersAndFacesOutward)
{
    const CMesh_Box box(2, 4, 6);
    ASSERT_EQ(box.numVertexes(), 8u);
    EXPECT_EQ(box.vertex[0], (Vector3d{-1, -2, -3}));
    EXPECT_EQ(box.vertex[1], (Vector3d{1, -2, -3}));
    EXPECT_EQ(box.vertex[2], (Vector3d{-1, 2, -3}));
    EXPECT_EQ(box.vertex[4], (Vector3d{-1, -2, 3}));
    EXPECT_EQ(box.vertex[7], (Vector3d{1, 2, 3}));
    EXPECT_EQ(box.tface, Indices(36, 0));
    EXPECT_TRUE(box.isSound());
}

using rgs::tests::volume;

TEST(Mesh, ShapesAreClosed)
{
    EXPECT_DOUBLE_EQ(std::abs(volume(CMesh_Box(2, 4, 6))), 48.0);
    // A prism over a regular hexagon of radius 2: 3 sqrt(3) / 2 r^2 times the height. The turn of
    // six digits bends the last side by 5e-6.
    EXPECT_NEAR(std::abs(volume(CMesh_Cylinder(6, 2, 5))), 5 * 6 * std::sqrt(3.0), 1e-4);
}

TEST(Mesh, CylinderOfThreeSides)
{
    const CMesh_Cylinder mesh(3, 1, 2);
    ASSERT_EQ(mesh.numVertexes(), 8u);
    EXPECT_EQ(mesh.numFaces(), 12u);
    EXPECT_EQ(mesh.vertex[0], (Vector3d{1, 0, 1}));
    EXPECT_EQ(mesh.vertex[3], (Vector3d{0, 0, 1}));
    EXPECT_EQ(mesh.vertex[4], (Vector3d{1, 0, -1}));
    EXPECT_EQ(mesh.vertex[7], (Vector3d{0, 0, -1}));
    EXPECT_NEAR(mesh.vertex[1].x, -0.5, 1e-5);
    // cos(0.1) and sin(0.1) at the top centre.
    EXPECT_NEAR(mesh.texcoord[3].x, 0.9950041652780258, 1e-15);
    EXPECT_NEAR(mesh.texcoord[3].y, 0.09983341664682815, 1e-15);
    EXPECT_EQ(mesh.texcoord[3].z, 1);
    const Indices expected{0, 1, 3, 1, 2, 3, 2, 0, 3, 4, 7, 5, 5, 7, 6, 6, 7, 4,
                           0, 4, 5, 1, 5, 6, 2, 6, 4, 0, 5, 1, 1, 6, 2, 2, 4, 0};
    EXPECT_EQ(mesh.face, expected);
    EXPECT_EQ(mesh.tface, expected);
    EXPECT_EQ(CMesh_Cylinder(0, 1, 1), CMesh());
}

TEST(Mesh, AssignmentThroughTheBaseReplacesTheArrays)
{
    CMesh_Box box(1, 1, 1);
    CMesh& base = box;
    base = triangle();
    EXPECT_EQ(box, triangle());
    const CMesh& self = base;
    base = self;
    EXPECT_EQ(box, triangle());
}

TEST(Mesh, BothFormsKeepEveryBit)
{
    for (const bool asElements : {false, true}) {
        for (const CMesh& mesh : {CMesh(), triangle(), CMesh(CMesh_Cylinder(7, 0.3, 0.7))}) {
            Element written;
            mesh.write(written, asElements);
            Element parsed;
            ASSERT_EQ(parsed.parse(written.toString()), 0);
            EXPECT_EQ(reread(parsed), mesh) << parsed.fragment();
        }
    }
}

TEST(Mesh, WritesTheChunkFormsEntries)
{
    Tag element("other");
    element.setAttribute("left", "over");
    triangle().write(element, false);
    EXPECT_EQ(element.name(), "CMesh");
    EXPECT_EQ(element.attributeCount(), 0u);
    const std::string bytes = base64Decode(element.text());
    const DataChunk chunk(bytes.data(), bytes.size());
    const char* const names[] = {"numVertexes", "numTexCoords", "numFaces", "numTFaces",
                                 "vertex",      "texcoord",     "face",     "tface"};
    const std::size_t sizes[] = {4, 4, 4, 4, 72, 24, 12, 12};
    ASSERT_EQ(chunk.memberCount(), 8u);
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(chunk.memberAt(i).name(), names[i]);
        EXPECT_EQ(chunk.memberAt(i).payloadSize(), sizes[i]) << names[i];
    }
    std::int32_t indices = 0;
    ASSERT_TRUE(chunk.member("numFaces").readValue(indices));
    EXPECT_EQ(indices, 3) << "indices, not triangles";
}

TEST(Mesh, ReadsListsMadeByHand)
{
    Element element;
    ASSERT_EQ(element.parse("<CMesh>\n"
                            "  <vertexdata><vertex>0 1.5 -2</vertex><note>x</note>"
                            "<vertex> 1e1\t2  3 </vertex></vertexdata>\n"
                            "  <facedata><face>0 1 1</face><face>1 x</face></facedata>\n"
                            "</CMesh>"),
              0);
    const CMesh mesh = reread(element);
    ASSERT_EQ(mesh.numVertexes(), 2u);
    EXPECT_EQ(mesh.vertex[0], (Vector3d{0, 1.5, -2}));
    EXPECT_EQ(mesh.vertex[1], (Vector3d{10, 2, 3}));
    EXPECT_EQ(mesh.face, (Indices{0, 1, 1, 1, -1, -1}));
    EXPECT_FALSE(mesh.isSound());
    EXPECT_TRUE(mesh.texcoord.empty());
}

TEST(Mesh, ListsTakePrecedenceOverTheChunk)
{
    Element element;
    triangle().write(element, false);
    element.addChild(Tag("vertexdata")).addChild(TagWithData("vertex", "1 2 3"));
    const CMesh mesh = reread(element);
    EXPECT_EQ(mesh.vertex, (std::vector<Vector3d>{{1, 2, 3}}));
    EXPECT_EQ(mesh.face, triangle().face) << "what no list names comes from the chunk";
}

/// What a chunk says of the vertices, and how many come of it.
TEST(Mesh, ReadsNoMoreThanAChunkHolds)
{
    struct Case
    {
        const char* name;
        std::int32_t count;
        std::size_t bytes, expected;
    };
    constexpr Case kCases[] = {
        {"as told", 2, 48, 2},
        {"fewer told than held", 1, 48, 1},
        {"more told than held", 2000000000, 48, 2},
        {"a part of a vertex", 2, 47, 1},
        {"negative", -1, 48, 0},
        {"none held", 5, 0, 0},
    };
    for (const Case& c : kCases) {
        const std::string payload(c.bytes, '\0');
        DataChunk chunk;
        chunk.addValue("numVertexes", c.count);
        chunk.addMember(DataChunk("vertex", payload.data(), payload.size()));
        std::size_t size = 0;
        const void* const bytes = chunk.serialize(&size);
        EXPECT_EQ(reread(TagWithData("CMesh", base64Encode(bytes, size))).numVertexes(), c.expected)
            << c.name;
    }
}

TEST(Mesh, UnreadableElements)
{
    CMesh mesh = triangle();
    mesh.read(TagWithData("Mesh", "AAAA"));
    EXPECT_EQ(mesh, triangle()) << "another name changes nothing";
    for (const char* text : {"AAAAA", "not base 64", "AAAA"}) {
        mesh = triangle();
        mesh.read(TagWithData("CMesh", text));
        EXPECT_EQ(mesh, CMesh()) << text;
    }
    mesh = triangle();
    mesh.read(Tag("CMesh"));
    EXPECT_EQ(mesh, CMesh()) << "no text, no children";
}

} // namespace
} // namespace tvw
