rigstage_bench(bench_runs SOURCES runs_bench.cpp DEPENDS rigstage_stage)
