find_package(pugixml CONFIG REQUIRED)
rigstage_bench(bench_xml SOURCES xml_bench.cpp DEPENDS rigstage_util pugixml)
