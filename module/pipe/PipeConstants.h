#pragma once

// The numbers of the pipe graphics, in one place.
//
// Angles derive from a value of pi with eight decimals. Pipes that were drawn with it join exactly only when
// everything keeps to it, so it is the value in use, not an approximation to be improved.

namespace plumb {

inline constexpr double kPi = 3.14159265;
inline constexpr double kQuarterTurn = 1.570796325;
inline constexpr double kEighthTurn = 0.7853981625;
inline constexpr double kSixthTurn = 1.04719755; // half of a riser's gap at a connection
inline constexpr double kFullTurn = 6.2831853;

// Cosine of kQuarterTurn, which is not quite 0; its sine is 1 to the last bit.
inline constexpr double kQuarterTurnCosine = 1.7948965149208059e-09;

// Elevation of every hidden twin and of every label, far above all that is built.
inline constexpr double kHiddenElevation = 100000.0;

// A pipe of this length in plan, or less, is a riser.
inline constexpr double kVerticalLimit = 0.1;

inline constexpr double kDefaultBreakWidth = 3.0;
inline constexpr double kDefaultVerticalRadius = 6.0;

// Directions between these two bounds would read upside down: a quarter and three quarters of a turn, each
// with a thousandth of a half turn on top so that a pipe straight up the sheet keeps its direction.
inline constexpr double kUpsideDownFrom = 1.57393791765;
inline constexpr double kUpsideDownTo = 4.71553056765;

// More labels than this on one piece of pipe are a spacing gone wrong; the piece then gets one.
inline constexpr double kMostLabels = 10000.0;

// The trap's curve: steps beside its ends in inches, and beside the middle of its foot as a share of its
// width.
inline constexpr double kTrapStep = 0.01;
inline constexpr double kTrapChordShare = 0.1; // chord of a broken curve, share of the width

inline constexpr int kMostFiled = 100; // elements of a list that the record takes

} // namespace plumb
