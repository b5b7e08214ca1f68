// Reads a SAT text back by its records alone and audits it: pointers, loops, senses, geometry, and
// the volume and area that the faces enclose. Knows nothing of the code that wrote it.
#pragma once

#include <string>
#include <vector>

namespace sat {

struct Vec {
    double x = 0.0, y = 0.0, z = 0.0;
};

struct Record {
    std::string name;
    std::vector<std::string> fields;  // after attributes, id and pattern
};

struct File {
    std::string version, counts, product, modeller, date;
    double millimetresPerUnit = 0.0;
    std::vector<Record> records;
};

// Empty error: the text is well formed and every pointer lands on a record.
std::string Parse(const std::string& text, File& file);

struct Audit {
    std::vector<std::string> faults;
    double volume = 0.0;
    double area = 0.0;
    std::vector<double> shellVolumes;
    std::vector<std::string>
        faceKinds;  // "plane", "cylinder", "cone", "sphere", "torus", "-" reversed
    int bodies = 0, faces = 0, circles = 0, tips = 0;
};

// Checks the solids of revolution of a file: chains and back pointers, partners, Euler's formula,
// vertices on circles, circles on both surfaces, the face left of each coedge; and integrates
// volume and area over the faces.
Audit Check(const File& file);

}  // namespace sat
