// MOVE, ROTATE, SCALE and MIRROR.
#include <cmath>

#include "aced.h"
#include "dbobjptr.h"
#include "host/base/angles.h"
#include "host/ed/command_tools.h"
#include "host/ed/session.h"

namespace host {
namespace {

AcGeMatrix3d Turn(double angle, const AcGePoint3d& centre) {
    return AcGeMatrix3d::rotation(angle, AcGeVector3d::kZAxis, centre);
}

AcGeMatrix3d MirrorAbout(const AcGePoint3d& a, const AcGePoint3d& b) {
    // Turned onto the x axis, mirrored, turned back.
    const double angle = std::atan2(b.y - a.y, b.x - a.x);
    AcGeMatrix3d flip;
    flip(1, 1) = -1.0;
    const AcGeMatrix3d there = AcGeMatrix3d::translation(a.asVector()) *
                               AcGeMatrix3d::rotation(angle, AcGeVector3d::kZAxis);
    return there * flip * there.inverse();
}

// What the commands begin with.
struct Start {
    SelectionSet entities;
    Answer base;
    bool IsGood() const { return !entities.empty() && base.kind == Answer::kGiven; }
};

Start Ask(AcApDocument& document) {
    Start start;
    start.entities = SelectForChange(document);
    if (!start.entities.empty()) start.base = AskPoint(L"\nSpecify base point: ");
    return start;
}

}  // namespace

CommandEnd MoveEntities(AcApDocument* document) {
    const Start start = Ask(*document);
    if (!start.IsGood()) return CommandEnd::kCancelled;
    const DragOutline outline(start.entities);
    PointRequest request;
    request.base = &start.base.point;
    request.drag = [&](const AcGePoint3d& at) {
        return outline.After(AcGeMatrix3d::translation(at - start.base.point));
    };
    const Answer to =
        AskPoint(L"\nSpecify second point or <use first point as displacement>: ", request);
    if (to.kind != Answer::kGiven && to.kind != Answer::kEnter) return CommandEnd::kCancelled;
    const AcGeVector3d step =
        to.kind == Answer::kEnter ? start.base.point.asVector() : to.point - start.base.point;
    return TransformAll(start.entities, AcGeMatrix3d::translation(step));
}

CommandEnd RotateEntities(AcApDocument* document) {
    const Start start = Ask(*document);
    if (!start.IsGood()) return CommandEnd::kCancelled;
    const DragOutline outline(start.entities);
    const AcGePoint3d& base = start.base.point;
    const auto angleTo = [&](const AcGePoint3d& at) {
        return std::atan2(at.y - base.y, at.x - base.x);
    };
    PointRequest request;
    request.base = &base;
    request.takesNumber = true;
    request.drag = [&](const AcGePoint3d& at) { return outline.After(Turn(angleTo(at), base)); };
    const Answer answer = AskPoint(L"\nSpecify rotation angle in degrees: ", request);
    if (answer.kind != Answer::kGiven && answer.kind != Answer::kNumber)
        return CommandEnd::kCancelled;
    const double angle =
        answer.kind == Answer::kNumber ? answer.number * kDegree : angleTo(answer.point);
    return TransformAll(start.entities, Turn(angle, base));
}

CommandEnd ScaleEntities(AcApDocument* document) {
    const Start start = Ask(*document);
    if (!start.IsGood()) return CommandEnd::kCancelled;
    const DragOutline outline(start.entities);
    const AcGePoint3d& base = start.base.point;
    PointRequest request;
    request.base = &base;
    request.takesNumber = true;
    request.drag = [&](const AcGePoint3d& at) {
        return outline.After(AcGeMatrix3d::scaling((std::max)(at.distanceTo(base), 1e-9), base));
    };
    const Answer answer = AskPoint(L"\nSpecify scale factor: ", request);
    if (answer.kind != Answer::kGiven && answer.kind != Answer::kNumber)
        return CommandEnd::kCancelled;
    const double factor =
        answer.kind == Answer::kNumber ? answer.number : answer.point.distanceTo(base);
    if (!(factor > 0.0)) {
        Say(L"A scale factor must be greater than zero.");
        return CommandEnd::kFailed;
    }
    return TransformAll(start.entities, AcGeMatrix3d::scaling(factor, base));
}

CommandEnd MirrorEntities(AcApDocument* document) {
    const SelectionSet entities = SelectForChange(*document);
    if (entities.empty()) return CommandEnd::kCancelled;
    const Answer first = AskPoint(L"\nSpecify first point of mirror line: ");
    if (first.kind != Answer::kGiven) return CommandEnd::kCancelled;
    const DragOutline outline(entities);
    PointRequest request;
    request.base = &first.point;
    request.drag = [&](const AcGePoint3d& at) {
        return outline.After(MirrorAbout(first.point, at));
    };
    const Answer second = AskPoint(L"\nSpecify second point of mirror line: ", request);
    if (second.kind != Answer::kGiven) return CommandEnd::kCancelled;
    if (second.point.isEqualTo(first.point)) {
        Say(L"The two points of the mirror line are one.");
        return CommandEnd::kFailed;
    }
    const Answer erases = AskText(L"\nErase source objects? [Yes/No] <No>: ", false);
    if (erases.kind == Answer::kEscape) return CommandEnd::kCancelled;
    const AcGeMatrix3d mirror = MirrorAbout(first.point, second.point);
    if (MatchKeyword(erases.text, {L"Yes", L"No"}) == L"YES") return TransformAll(entities, mirror);
    size_t refused = 0;
    for (const AcDbObjectId id : entities) {
        AcDbEntity* copy = nullptr;
        {
            const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            if (entity.openStatus() == Acad::eOk)
                static_cast<void>(entity->getTransformedCopy(mirror, copy));
            if (copy != nullptr) static_cast<void>(copy->setPropertiesFrom(entity.object()));
        }
        std::unique_ptr<AcDbEntity> made(copy);
        if (made == nullptr || AddCopy(*document->database(), std::move(made)) != Acad::eOk)
            ++refused;
    }
    if (refused > 0) Say(std::to_wstring(refused) + L" could not be mirrored.");
    acedUpdateDisplay();
    return refused < entities.size() ? CommandEnd::kEnded : CommandEnd::kFailed;
}

}  // namespace host
