#pragma once
// The chi-square distribution, for the test of the variance factor.

namespace tessel::adjustment {

// P(X <= x) for `dof` degrees of freedom.
double ChiSquareCdf(double x, double dof);
// The x with ChiSquareCdf(x, dof) == p, for 0 < p < 1.
double ChiSquareQuantile(double p, double dof);

}  // namespace tessel::adjustment
