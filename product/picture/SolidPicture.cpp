#include "product/picture/SolidPicture.h"

#include "host/solid/picture.h"
#include "host/solid/turned_mesh.h"

namespace product {
namespace {

constexpr int kSheetWidth = 1400;  // pixels
// What a triangle may leave the surface by, of the largest diameter.
constexpr double kChordShare = 5e-4;

std::vector<host::solid::PaintedSolid> Painted(const std::vector<ShownSolid>& solids) {
    std::vector<host::solid::PaintedSolid> painted;
    for (const ShownSolid& solid : solids)
        painted.push_back(
            {solid.profile,
             host::solid::TurnedMesh(*solid.profile,
                                     kChordShare * Measure(*solid.profile).largestDiameter),
             solid.rgb});
    return painted;
}

}  // namespace

std::optional<SolidPicture> DrawSolid(const std::vector<ShownSolid>& solids, int width,
                                      std::string& reason) {
    const host::solid::Image image = host::solid::RenderSolid(Painted(solids), width);
    SolidPicture picture;
    picture.width = image.width;
    picture.height = image.height;
    if (!host::solid::EncodePng(image, picture.bytes, reason)) return std::nullopt;
    return picture;
}

bool DrawSolidSheet(const std::vector<ShownSolid>& solids, std::string& bytes,
                    std::string& reason) {
    return host::solid::EncodePng(host::solid::RenderPicture(Painted(solids), kSheetWidth), bytes,
                                  reason);
}

}  // namespace product
