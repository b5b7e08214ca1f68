#include "apps/qzhost/view/PointAid.h"

#include <cmath>

#include "host/base/angles.h"
#include "host/ed/prompts.h"
#include "host/ed/text_compare.h"

namespace app {
namespace {

double Rounded(double value, double step) { return std::round(value / step) * step; }

const wchar_t* LabelOf(host::SnapMode mode) {
    for (const host::SnapModeName& name : host::SnapModeNames())
        if (name.mode == mode) return name.label;
    return L"";
}

// The foot of the pointer on the ray from the base at that angle, when it is within the aperture.
std::optional<AcGePoint3d> OnRay(const AcGePoint3d& pointer, const AcGePoint3d& base,
                                 double degrees, double aperture) {
    const AcGeVector3d along(std::cos(degrees * host::kDegree), std::sin(degrees * host::kDegree),
                             0.0);
    const AcGeVector3d out = pointer - base;
    const AcGePoint3d foot = base + along * (out.x * along.x + out.y * along.y);
    if (foot.distanceTo(pointer) > aperture) return {};
    // Along an axis the other coordinate stays as it is, digit for digit.
    const double quarter = std::fmod(degrees + 720.0, 90.0);
    if (quarter != 0.0) return foot;
    const bool isAcross = std::fmod(degrees + 720.0, 180.0) == 0.0;
    return isAcross ? AcGePoint3d(foot.x, base.y, 0.0) : AcGePoint3d(base.x, foot.y, 0.0);
}

}  // namespace

void PointAid::Reset() {
    once.reset();
    m_cycle = 0;
}

Aim PointAid::At(const AcGePoint3d& pointer, double aperture, const AcGePoint3d* base,
                 const Sources& sources) {
    if (!pointer.isEqualTo(m_lastPointer)) m_cycle = 0;
    m_lastPointer = pointer;
    Aim aim;
    aim.point = pointer;
    const unsigned wanted = once ? *once : isSnapping ? modes : 0;
    if (wanted != 0) {
        const std::vector<host::Snap> snaps =
            host::FindSnaps(sources(pointer, aperture), pointer, aperture, wanted, base);
        if (!snaps.empty()) {
            aim.snap = snaps[m_cycle % snaps.size()];
            aim.point = aim.snap->point;
            aim.label = LabelOf(aim.snap->mode);
            return aim;
        }
    }
    if (base != nullptr && isOrtho) {
        const bool isAcross = std::fabs(pointer.x - base->x) >= std::fabs(pointer.y - base->y);
        aim.point =
            isAcross ? AcGePoint3d(pointer.x, base->y, 0.0) : AcGePoint3d(base->x, pointer.y, 0.0);
        aim.isOnRay = true;
    } else if (base != nullptr && isPolar && !pointer.isEqualTo(*base)) {
        const double angle = std::atan2(pointer.y - base->y, pointer.x - base->x) / host::kDegree;
        const double step = Rounded(angle, polarStep);
        if (const auto foot = OnRay(pointer, *base, step, aperture)) {
            aim.point = *foot;
            aim.isOnRay = true;
            aim.label =
                std::to_wstring(static_cast<int>(std::lround(step + 360.0)) % 360) + L"\u00B0";
        }
    }
    if (!aim.isOnRay && isOnGrid && gridStep > 0.0)
        aim.point.set(Rounded(pointer.x, gridStep), Rounded(pointer.y, gridStep), 0.0);
    return aim;
}

std::optional<unsigned> ParseSnapWord(const std::wstring& word) {
    const std::wstring upper = host::ToUpper(word);
    if (upper == L"NON" || upper == L"NONE") return 0u;
    std::vector<std::wstring> words;
    for (const host::SnapModeName& name : host::SnapModeNames()) words.push_back(name.word);
    const std::wstring meant = host::MatchKeyword(word, words);
    for (const host::SnapModeName& name : host::SnapModeNames())
        if (!meant.empty() && host::ToUpper(name.word) == meant) return name.mode;
    return {};
}

}  // namespace app
