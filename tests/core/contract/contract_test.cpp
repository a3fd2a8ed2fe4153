// External tool files are compiled apart from the program, so what binds the two is the place of
// each operation in its class's table. These tests go through hand-written tables, not through the
// headers: a moved operation fails here even though everything that is compiled together still
// agrees.
#include "core/contract/interface.h"
#include "core/contract/plugin.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <dlfcn.h>
#include <memory>
#include <utility>
#include <vector>

namespace {

using namespace tvw::rgs;

struct CloseLibrary
{
    void operator()(void* library) const { dlclose(library); }
};

class ToolFile : public testing::Test
{
protected:
    void SetUp() override
    {
        library_.reset(dlopen(RIGSTAGE_EXTERNAL_TOOL, RTLD_NOW | RTLD_LOCAL));
        ASSERT_TRUE(library_) << dlerror();
    }

    template <class F>
    F* symbol(const char* name)
    {
        return reinterpret_cast<F*>(dlsym(library_.get(), name));
    }

    std::unique_ptr<void, CloseLibrary> library_;
};

/// The function at a place of an object's table.
template <class F>
F* slot(void* object, std::size_t place)
{
    return reinterpret_cast<F*>((*static_cast<void***>(object))[place]);
}

TEST_F(ToolFile, ToolOperationsStandAtTheirPlaces)
{
    CCameraPlugin* const plugin = symbol<CCameraPlugin*(std::int32_t)>("getPlugin")(0);
    CCamera::CreateParam param("Noting_01");
    CCamera* const tool = plugin->create(param);
    ASSERT_TRUE(tool);
    EXPECT_EQ(plugin->getDataFolder(), "NotingTool") << "the id, where a tool says nothing";
    EXPECT_EQ(plugin->getVersion(), 23101);
    EXPECT_EQ(tool->plugin(), plugin);
    EXPECT_EQ(tool->name(), "Noting_01");

    slot<std::intptr_t(void*, std::int32_t, void*)>(tool, 0)(tool, 1, nullptr);
    slot<bool(void*, std::int32_t)>(tool, 2)(tool, 1);
    slot<void(void*, double)>(tool, 3)(tool, 0.0);
    slot<void(void*)>(tool, 4)(tool);
    slot<void(void*, double)>(tool, 5)(tool, 0.0);
    slot<void(void*, double)>(tool, 6)(tool, 0.0);
    for (std::size_t place = 7; place <= 10; ++place)
        EXPECT_EQ(slot<int(void*)>(tool, place)(tool), 0);
    slot<void(void*)>(tool, 11)(tool);
    EXPECT_STREQ(symbol<const char*()>("noted")(),
                 "call isSupported startRun stopRun tick timeChanged declareConfiguration "
                 "createNodes load save destroy ");
    constexpr std::size_t kDeletingDestructor = 13; // the ABI's second entry of the destructor
    slot<void(void*)>(tool, kDeletingDestructor)(tool);
    plugin->destroy();
}

std::vector<std::size_t> reached;

/// Stands at place N of a hand-written table. Arguments are not looked at; a result in a register
/// is 0.
template <std::size_t N>
std::intptr_t noteCall()
{
    reached.push_back(N);
    return 0;
}

/// A result that is an object is built where the caller says: an empty vector is all zeros.
template <std::size_t N>
void* noteCallForVector(void* result)
{
    reached.push_back(N);
    return std::memset(result, 0, sizeof(std::vector<std::int32_t>));
}

constexpr std::size_t kOperations = 43; // and the destructor, which a tool never calls

template <std::size_t... N>
std::array<void*, kOperations> table(std::index_sequence<N...>)
{
    std::array<void*, kOperations> entries{reinterpret_cast<void*>(&noteCall<N>)...};
    entries[1] = reinterpret_cast<void*>(&noteCallForVector<1>);
    return entries;
}

TEST_F(ToolFile, InterfaceOperationsStandAtTheirPlaces)
{
    auto entries = table(std::make_index_sequence<kOperations>());
    struct
    {
        void** operations;
    } runtime{entries.data()};

    reached.clear();
    symbol<void(void*)>("callAll")(&runtime);

    ASSERT_EQ(reached.size(), kOperations);
    for (std::size_t i = 0; i < kOperations; ++i)
        EXPECT_EQ(reached[i], i);
}

} // namespace
