#include "adjustment/selected_inverse.h"

#include <algorithm>
#include <stdexcept>

namespace tessel::adjustment {

SelectedInverse::SelectedInverse(const Eigen::SparseMatrix<double>& lower, const Eigen::VectorXd& d,
                                 const Eigen::VectorXi& permutation)
    : z_(lower), diagonal_(static_cast<std::size_t>(d.size())), permutation_(permutation) {
  z_.makeCompressed();
  const int n = static_cast<int>(d.size());
  const int* start = z_.outerIndexPtr();
  const int* rows = z_.innerIndexPtr();
  const double* l = lower.valuePtr();
  double* z = z_.valuePtr();
  std::vector<int> place(static_cast<std::size_t>(n), -1);
  std::vector<double> sum;
  // Z(i,j) = -sum over k of Z(i,k) L(k,j) for the rows i, k of column j, and
  // Z(j,j) = 1/D(j) - sum over k of Z(k,j) L(k,j); columns from the last, since each needs the
  // later ones.
  for (int j = n - 1; j >= 0; --j) {
    const int b = start[j], e = start[j + 1];
    sum.assign(static_cast<std::size_t>(e - b), 0.0);
    for (int p = b; p < e; ++p) place[static_cast<std::size_t>(rows[p])] = p - b;
    for (int p = b; p < e; ++p) {
      const int k = rows[p];
      const double lkj = l[p];
      sum[static_cast<std::size_t>(p - b)] += diagonal_[static_cast<std::size_t>(k)] * lkj;
      for (int q = start[k]; q < start[k + 1]; ++q) {
        const int at = place[static_cast<std::size_t>(rows[q])];
        if (at < 0) continue;
        // Z(i,k) with i below k, both rows of column j: it enters Z(i,j) through L(k,j) and
        // Z(k,j) through L(i,j).
        sum[static_cast<std::size_t>(at)] += z[q] * lkj;
        sum[static_cast<std::size_t>(p - b)] += z[q] * l[b + at];
      }
    }
    double diagonal = 1.0 / d[j];
    for (int p = b; p < e; ++p) {
      z[p] = -sum[static_cast<std::size_t>(p - b)];
      diagonal -= z[p] * l[p];
      place[static_cast<std::size_t>(rows[p])] = -1;
    }
    diagonal_[static_cast<std::size_t>(j)] = diagonal;
  }
}

double SelectedInverse::operator()(int i, int j) const {
  int a = permutation_[i], b = permutation_[j];
  if (a == b) return diagonal_[static_cast<std::size_t>(a)];
  if (a < b) std::swap(a, b);
  const int* start = z_.outerIndexPtr();
  const int* rows = z_.innerIndexPtr();
  const int* end = rows + start[b + 1];
  const int* at = std::lower_bound(rows + start[b], end, a);
  if (at == end || *at != a) throw std::logic_error("entry off the factor's pattern");
  return z_.valuePtr()[at - rows];
}

}  // namespace tessel::adjustment
