#include "adjustment/selected_inverse.h"

#include <algorithm>
#include <stdexcept>

#include <Eigen/Dense>

namespace tessel::adjustment {

namespace {

// Columns j..e-1 form a supernode when each holds the next one's rows and the next column itself:
// they then share one dense block of the inverse.
int SupernodeEnd(const int* start, const int* rows, int j, int n) {
  int e = j + 1;
  while (e < n) {
    const int prev = e - 1;
    const int count = start[prev + 1] - start[prev];
    if (count != start[e + 1] - start[e] + 1 || rows[start[prev]] != e ||
        !std::equal(rows + start[prev] + 1, rows + start[prev + 1], rows + start[e])) {
      break;
    }
    ++e;
  }
  return e;
}

}  // namespace

SelectedInverse::SelectedInverse(const Eigen::SparseMatrix<double>& lower, const Eigen::VectorXd& d,
                                 const Eigen::VectorXi& permutation)
    : z_(lower), diagonal_(static_cast<std::size_t>(d.size())), permutation_(permutation) {
  z_.makeCompressed();
  const int n = static_cast<int>(d.size());
  const int* start = z_.outerIndexPtr();
  const int* rows = z_.innerIndexPtr();
  const double* l = lower.valuePtr();
  double* z = z_.valuePtr();

  // Supernodes from the first column on; their blocks of the inverse from the last.
  std::vector<std::pair<int, int>> supernodes;
  for (int j = 0; j < n;) {
    const int e = SupernodeEnd(start, rows, j, n);
    supernodes.emplace_back(j, e);
    j = e;
  }
  std::vector<int> place(static_cast<std::size_t>(n), -1);
  for (auto s = supernodes.rbegin(); s != supernodes.rend(); ++s) {
    const auto [first, end] = *s;
    const int w = end - first;
    const int* below = rows + start[end - 1];  // R: the rows below the supernode
    const int m = start[end] - start[end - 1];

    // Z(R,R), gathered from the columns already done: the rows of R below a row r of R are all
    // rows of column r, found by walking it or, where it is long, by halving.
    Eigen::MatrixXd zrr(m, m);
    for (int a = 0; a < m; ++a) place[static_cast<std::size_t>(below[a])] = a;
    for (int a = 0; a < m; ++a) {
      const int r = below[a];
      zrr(a, a) = diagonal_[static_cast<std::size_t>(r)];
      const int q0 = start[r], q1 = start[r + 1];
      if (q1 - q0 <= 8 * (m - a)) {
        for (int q = q0; q < q1; ++q) {
          const int b = place[static_cast<std::size_t>(rows[q])];
          if (b >= 0) zrr(b, a) = zrr(a, b) = z[q];
        }
      } else {
        int q = q0;
        for (int b = a + 1; b < m; ++b) {
          q = static_cast<int>(std::lower_bound(rows + q, rows + q1, below[b]) - rows);
          if (q == q1 || rows[q] != below[b]) throw std::logic_error("the factor's pattern is not closed");
          zrr(b, a) = zrr(a, b) = z[q];
        }
      }
    }
    for (int a = 0; a < m; ++a) place[static_cast<std::size_t>(below[a])] = -1;

    // L(S,S) unit lower, L(R,S), and with M = L(R,S) L(S,S)^-1:
    //   Z(R,S) = -Z(R,R) M,   Z(S,S) = L(S,S)^-T D(S)^-1 L(S,S)^-1 + M^T Z(R,R) M.
    Eigen::MatrixXd lss = Eigen::MatrixXd::Identity(w, w), lrs(m, w);
    for (int c = 0; c < w; ++c) {
      const int p = start[first + c];
      for (int i = c + 1; i < w; ++i) lss(i, c) = l[p + i - c - 1];
      for (int a = 0; a < m; ++a) lrs(a, c) = l[p + w - c - 1 + a];
    }
    const Eigen::MatrixXd inverse = lss.triangularView<Eigen::UnitLower>().solve(Eigen::MatrixXd::Identity(w, w));
    const Eigen::MatrixXd mrs = lrs * inverse;
    const Eigen::MatrixXd zrs = -(zrr * mrs);
    const Eigen::VectorXd dInverse = d.segment(first, w).cwiseInverse();
    const Eigen::MatrixXd zss = inverse.transpose() * dInverse.asDiagonal() * inverse - mrs.transpose() * zrs;
    for (int c = 0; c < w; ++c) {
      const int p = start[first + c];
      for (int i = c + 1; i < w; ++i) z[p + i - c - 1] = zss(i, c);
      for (int a = 0; a < m; ++a) z[p + w - c - 1 + a] = zrs(a, c);
      diagonal_[static_cast<std::size_t>(first + c)] = zss(c, c);
    }
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
