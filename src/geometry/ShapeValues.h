#pragma once

#include "framework/ParamTypes.h"

// The entries of the eParamValue table that choose how a surface or an outline is shaped
// and sampled.
namespace shapeValue {

// renderDetail
inline constexpr eParamValue veryLow = static_cast<eParamValue>(36);
inline constexpr eParamValue low = static_cast<eParamValue>(37);
inline constexpr eParamValue medium = static_cast<eParamValue>(38);
inline constexpr eParamValue high = static_cast<eParamValue>(39);
inline constexpr eParamValue veryHigh = static_cast<eParamValue>(40);

// One point ("single" of arrayShape).
inline constexpr eParamValue single = static_cast<eParamValue>(73);

// apertureShape
inline constexpr eParamValue circle = static_cast<eParamValue>(82);
inline constexpr eParamValue square = static_cast<eParamValue>(83);
inline constexpr eParamValue pointsWidth = static_cast<eParamValue>(84);
inline constexpr eParamValue circle3d = static_cast<eParamValue>(85);
inline constexpr eParamValue square3d = static_cast<eParamValue>(86);
// The outline through a list of points. It has no text in the table.
inline constexpr eParamValue pointOutline = static_cast<eParamValue>(87);

// surfaceShapeName
inline constexpr eParamValue surfaceFlat = static_cast<eParamValue>(90);
inline constexpr eParamValue surfacePolynomial = static_cast<eParamValue>(91);
inline constexpr eParamValue surfaceSpherical = static_cast<eParamValue>(92);
inline constexpr eParamValue surfaceCube = static_cast<eParamValue>(93);
inline constexpr eParamValue surfaceApertureExtend = static_cast<eParamValue>(94);

// coordSystem
inline constexpr eParamValue cylindrical = static_cast<eParamValue>(103);
inline constexpr eParamValue spherical = static_cast<eParamValue>(104);
inline constexpr eParamValue cartesian = static_cast<eParamValue>(105);

}  // namespace shapeValue
