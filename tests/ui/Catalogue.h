#pragma once
#include <cstdint>
#include <string>
#include <vector>

/// The images that the editor expects to find, and what it expects of them.
struct CatalogueRow {
    std::string name;
    int32_t width, height;
    bool isRgba; // else RGB
};

const std::vector<CatalogueRow> &catalogue();
