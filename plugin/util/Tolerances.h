// The fixed tolerances and lengths of this folder and of those above it that need the same ones. In
// drawing units unless said otherwise; "nearer" is strict. What users can set is in
// CEncircleCalInfo, not here.
#pragma once

// Points nearer than this make no line: what files and the host keep of coordinates ends there.
constexpr double kShortestLine = 1e-6;

// Boxes come from computed corners: one that misses another's side by less still lies in it.
constexpr double kCornerTol = 1e-6;

// An envelope that lies farther across the axis crosses it, and cannot be revolved.
constexpr double kAxisTol = 1e-6;

// An edge of an envelope whose ends differ by less in y is level: its axis may run along it.
constexpr double kHorizontalTol = 0.0001;

// How far the temporary axis line reaches beyond what it is drawn for, on both sides.
constexpr double kAxisOverhang = 10.0;

// Slopes that differ by less are one (dimensionless): segments with such slopes are parallel.
constexpr double kSlopeTol = 1e-6;

// Angles nearer to a full turn than this count as 0 (radians): an arc that ends at 0 may be stored
// as ending at 2 pi less a rounding.
constexpr double kFullTurnTol = 1e-9;
