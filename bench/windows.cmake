find_package(Qt5 5.15 REQUIRED COMPONENTS Widgets)
rigstage_bench(bench_windows SOURCES windows_bench.cpp
  DEPENDS rigstage_app rigstage_stage rigstage_data Qt5::Widgets)
