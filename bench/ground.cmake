# Rays at the ground and whole cars, against Bullet's ray caster and vehicle on the same triangles.
find_package(PkgConfig REQUIRED)
pkg_check_modules(BULLET REQUIRED IMPORTED_TARGET bullet-float64)
rigstage_bench(bench_ground SOURCES ground_bench.cpp DEPENDS rigstage_stage PkgConfig::BULLET)
rigstage_bench(bench_car SOURCES car_bench.cpp DEPENDS rigstage_stage PkgConfig::BULLET)
