#include "database_file.h"
#include "fault.h"
#include "source_file.h"

#include <fmt/format.h>

#include <cstdio>
#include <fstream>

namespace {

void write(const std::string& target, const std::string& text) {
    std::ofstream file(target, std::ios::binary | std::ios::trunc);
    file << text << std::flush;
    if (!file) {
        throw tvdata::Fault(target + ": cannot be written");
    }
}

void expand(const std::string& database, const std::string& definitions, int count,
            const char* const* sources) {
    tvdata::Catalogue catalogue;
    tvdata::CompoundFactors compounds(catalogue);
    for (int i = 0; i < count; ++i) {
        tvdata::readSourceFile(sources[i], catalogue, compounds);
    }
    catalogue.checkCommonUnits();
    write(database, tvdata::databaseText(catalogue, compounds));
    write(definitions, tvdata::definitionsText(catalogue));
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        fmt::print(stderr, "usage: tvtypes_expand_units DATABASE DEFINITIONS SOURCE...\n");
        return 2;
    }
    try {
        expand(argv[1], argv[2], argc - 3, argv + 3);
    } catch (const std::exception& error) {
        fmt::print(stderr, "tvtypes_expand_units: {}\n", error.what());
        return 1;
    }
    return 0;
}
