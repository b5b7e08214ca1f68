// Outlines from text and at random, and their volume by plain integration along the drawn outline.
#pragma once

#include <random>
#include <string>

#include "host/solid/profile.h"

// "0,0 42,0(0.32) 40,4": corners, the bulge of the piece that starts there in brackets.
host::solid::Outline ParseOutline(const std::string& text);
std::string Show(const host::solid::Outline& outline);

// pi times the closed integral of y^2 dx and 2 pi times that of y ds, about the axis y = axisY.
// Gauss points on every piece, arcs by their angle.
struct PlainMeasures {
    double volume = 0.0, area = 0.0;
};
PlainMeasures IntegratePlainly(const host::solid::Outline& outline, double axisY);

// A turned part with x along the axis y = 0: steps, cones, fillets, bulging and hollow arcs; with
// its ends flat, pointed or round on the axis, or hollow all the way through. No piece is shorter
// than 0.01 and nothing is nearly aligned by chance, so that preparing it moves nothing.
host::solid::Outline RandomTurnedPart(std::mt19937& random, int steps);

// The same outline run backwards, mirrored to the other side of the axis, or begun at another
// corner.
host::solid::Outline Reversed(const host::solid::Outline& outline);
host::solid::Outline Flipped(const host::solid::Outline& outline);
host::solid::Outline StartedAt(const host::solid::Outline& outline, std::size_t corner);
