#pragma once

// Real roots of polynomials of degree 1 to 4 in closed form. Coefficients come as an
// array c with c[0] the constant term and c[n] the leading one; the real roots are written
// to s and their count is returned. s needs room for 2 roots for the linear and quadric
// solvers, 3 for the cubic and 4 for the quartic.

// True when x lies strictly between -1e-9 and 1e-9: the zero of these solvers.
bool MATHHACK_isZero(double x);

// c[1] x + c[0] = 0.
int MATHHACK_solveLinear(const double c[2], double s[2]);

// c[2] x^2 + c[1] x + c[0] = 0; a zero c[2] falls to the linear case. A double root is
// stored twice and counted once.
int MATHHACK_solveQuadric(const double c[3], double s[2]);

// c[3] x^3 + ... + c[0] = 0, by Cardano's formulas, normalised by c[3].
int MATHHACK_solveCubic(const double c[4], double s[3]);

// c[4] x^4 + ... + c[0] = 0, by Ferrari's method through the resolvent cubic,
// normalised by c[4].
int MATHHACK_solveQuartic(const double c[5], double s[4]);
