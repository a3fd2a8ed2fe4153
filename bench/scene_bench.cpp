/// Saving and opening a scene with a million keys, beside the plain writing and reading of the same
/// bytes.
#include "adaptor/stage/scene_file.h"
#include "adaptor/stage/session.h"
#include "bench/compare.h"
#include "util/file.h"

#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

using namespace tvw::rgs::stage;

constexpr int kNodes = 100;
constexpr int kKeys = 10'000; ///< of each node

void fill(Stage& stage)
{
    for (int n = 0; n < kNodes; ++n) {
        StageNode& node = stage.addEmpty("Node" + std::to_string(n));
        for (int i = 0; i < kKeys; ++i) {
            tvw::Matrix4 pose = tvw::rotationMatrix(0.37 * i + n, 0.6, 0.0, 0.8);
            tvw::setTranslation(pose, {0.01 * i, 1.0 / (1 + n), -0.02 * i});
            node.setLocal(pose, i / 25.0, true);
        }
    }
}

/// A session with the scene, and a file for it that is gone afterwards.
struct Bench
{
    Bench()
    {
        SessionOptions options;
        options.isolated = true;
        auto started = Session::start(options);
        if (!started)
            return;
        session = std::move(*started);
        fill(session->stage());
        file = (std::filesystem::temp_directory_path() /
                ("rigstage_bench_" + std::to_string(::getpid()) + ".glb"))
                   .string();
        peerFile = file + ".peer";
        isReady = static_cast<bool>(saveScene(*session, file));
        auto read = tvw::readFile(file);
        isReady = isReady && read;
        bytes = read ? *std::move(read) : std::string();
    }
    ~Bench()
    {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        std::filesystem::remove(peerFile, ignored);
    }

    std::unique_ptr<Session> session;
    std::string file, peerFile, bytes;
    bool isReady = false;
};

void scene_save_vs_write(benchmark::State& state)
{
    Bench bench;
    if (!bench.isReady) {
        state.SkipWithError("the scene can't be saved");
        return;
    }
    tvw::bench::compare(
        state,
        [&] {
            benchmark::DoNotOptimize(bool(tvw::writeFileAtomically(bench.peerFile, bench.bytes)));
        },
        [&] { benchmark::DoNotOptimize(bool(saveScene(*bench.session, bench.file))); });
    state.counters["MB"] = static_cast<double>(bench.bytes.size()) / 1e6;
}
BENCHMARK(scene_save_vs_write)->Unit(benchmark::kMillisecond);

void scene_open_vs_read(benchmark::State& state)
{
    Bench bench;
    if (!bench.isReady || !openScene(*bench.session, bench.file) ||
        !saveScene(*bench.session, bench.peerFile) ||
        *tvw::readFile(bench.peerFile) != bench.bytes) {
        state.SkipWithError("the scene that is opened is not the one that was saved");
        return;
    }
    tvw::bench::compare(
        state, [&] { benchmark::DoNotOptimize(tvw::readFile(bench.file)->size()); },
        [&] { benchmark::DoNotOptimize(bool(openScene(*bench.session, bench.file))); });
    state.counters["MB"] = static_cast<double>(bench.bytes.size()) / 1e6;
}
BENCHMARK(scene_open_vs_read)->Unit(benchmark::kMillisecond);

} // namespace
