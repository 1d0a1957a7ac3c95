#include "database_file.h"
#include "fault.h"
#include "source_file.h"

#include <fmt/format.h>

#include <cstdio>
#include <fstream>

namespace {

void expand(const std::string& target, int count, const char* const* sources) {
    tvdata::Catalogue catalogue;
    tvdata::CompoundFactors compounds(catalogue);
    for (int i = 0; i < count; ++i) {
        tvdata::readSourceFile(sources[i], catalogue, compounds);
    }
    catalogue.checkCommonUnits();
    std::ofstream file(target, std::ios::binary | std::ios::trunc);
    file << tvdata::databaseText(catalogue, compounds) << std::flush;
    if (!file) {
        throw tvdata::Fault(target + ": cannot be written");
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        fmt::print(stderr, "usage: tvtypes_expand_units TARGET SOURCE...\n");
        return 2;
    }
    try {
        expand(argv[1], argc - 2, argv + 2);
    } catch (const std::exception& error) {
        fmt::print(stderr, "tvtypes_expand_units: {}\n", error.what());
        return 1;
    }
    return 0;
}
