#include "adjustment/chi_square.h"

#include <algorithm>
#include <cmath>

namespace tessel::adjustment {

namespace {

// The regularized lower incomplete gamma function P(a, x): its series below a + 1, the
// continued fraction of Q above (Lentz's method).
double GammaP(double a, double x) {
  if (x <= 0) return 0;
  const double logFront = a * std::log(x) - x - std::lgamma(a);
  if (x < a + 1) {
    double term = 1.0 / a, sum = term;
    for (int n = 1; n < 100000; ++n) {
      term *= x / (a + n);
      sum += term;
      if (std::fabs(term) < std::fabs(sum) * 1e-16) break;
    }
    return std::min(1.0, sum * std::exp(logFront));
  }
  constexpr double kTiny = 1e-300;
  double b = x + 1 - a, c = 1 / kTiny, d = 1 / b, h = d;
  for (int i = 1; i < 100000; ++i) {
    const double an = -i * (i - a);
    b += 2;
    d = an * d + b;
    if (std::fabs(d) < kTiny) d = kTiny;
    c = b + an / c;
    if (std::fabs(c) < kTiny) c = kTiny;
    d = 1 / d;
    const double delta = d * c;
    h *= delta;
    if (std::fabs(delta - 1) < 1e-16) break;
  }
  return std::max(0.0, 1.0 - std::exp(logFront) * h);
}

}  // namespace

double ChiSquareCdf(double x, double dof) { return GammaP(dof / 2, x / 2); }

double ChiSquareQuantile(double p, double dof) {
  // Bisection on a bracket that surely holds the quantile; the cdf is monotone, so 200 halvings
  // reach the precision of a double.
  double lo = 0, hi = std::max(1.0, dof);
  while (ChiSquareCdf(hi, dof) < p) hi *= 2;
  for (int i = 0; i < 200 && hi - lo > 1e-14 * hi; ++i) {
    const double mid = 0.5 * (lo + hi);
    (ChiSquareCdf(mid, dof) < p ? lo : hi) = mid;
  }
  return 0.5 * (lo + hi);
}

}  // namespace tessel::adjustment
