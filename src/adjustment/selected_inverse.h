#pragma once
// The entries of a sparse symmetric matrix's inverse that lie on the pattern of its factor, from
// N = L D L^T (Takahashi's recurrence): what the standard errors and the standardized residuals
// need, without ever forming the dense inverse.

#include <vector>

#include <Eigen/SparseCore>

namespace tessel::adjustment {

class SelectedInverse {
 public:
  // `lower` is the strictly lower part of the unit lower factor, column-compressed with sorted
  // rows; `d` the diagonal; `permutation` maps an unknown to its place in the factor.
  SelectedInverse(const Eigen::SparseMatrix<double>& lower, const Eigen::VectorXd& d,
                  const Eigen::VectorXi& permutation);
  // Entry (i, j) of the inverse, unknowns in their own order; (i, j) must lie on the pattern,
  // as any two unknowns of one observation do.
  double operator()(int i, int j) const;

 private:
  Eigen::SparseMatrix<double> z_;  // the inverse on the factor's pattern, strictly lower
  std::vector<double> diagonal_;
  Eigen::VectorXi permutation_;
};

}  // namespace tessel::adjustment
