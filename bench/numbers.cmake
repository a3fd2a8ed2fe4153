# Peer: Eigen (libeigen3-dev). Where it is not found the entries that need it are left out.
rigstage_bench(bench_numbers SOURCES bench_avar.cpp DEPENDS rigstage_util)
find_package(Eigen3 CONFIG)
if(TARGET Eigen3::Eigen)
  target_sources(bench_numbers PRIVATE bench_algebra.cpp)
  target_link_libraries(bench_numbers PRIVATE Eigen3::Eigen)
endif()
