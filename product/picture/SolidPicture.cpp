#include "product/picture/SolidPicture.h"

#include "host/solid/picture.h"
#include "host/solid/turned_mesh.h"

namespace product {
namespace {

constexpr int kSheetWidth = 1400;  // pixels
// What a triangle may leave the surface by, of the largest diameter.
constexpr double kChordShare = 5e-4;

host::solid::Mesh Triangles(const host::solid::Profile& profile) {
    return host::solid::TurnedMesh(profile, kChordShare * Measure(profile).largestDiameter);
}

}  // namespace

std::optional<SolidPicture> DrawSolid(const host::solid::Profile& profile, int width,
                                      std::string& reason) {
    const host::solid::Image image = host::solid::RenderSolid(profile, Triangles(profile), width);
    SolidPicture picture;
    picture.width = image.width;
    picture.height = image.height;
    if (!host::solid::EncodePng(image, picture.bytes, reason)) return std::nullopt;
    return picture;
}

bool DrawSolidSheet(const host::solid::Profile& profile, std::string& bytes, std::string& reason) {
    return host::solid::EncodePng(
        host::solid::RenderPicture(profile, Triangles(profile), kSheetWidth), bytes, reason);
}

}  // namespace product
