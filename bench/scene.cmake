rigstage_bench(bench_scene SOURCES scene_bench.cpp DEPENDS rigstage_stage)
