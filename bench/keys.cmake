# Keys of takes, against what one would write by hand. No peer library.
rigstage_bench(bench_keys SOURCES keys_bench.cpp DEPENDS rigstage_stage)
