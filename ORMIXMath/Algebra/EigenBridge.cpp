#include <ORMIXMath/Algebra/EigenBridge.h>

#include <cmath>
#include <string>

namespace ormix::detail {

namespace {

std::string sizeOf(const RealMatrix& a) { return std::to_string(a.size1()) + " x " + std::to_string(a.size2()); }

}  // namespace

BoolResult checkMatrix(const char* operation, const RealMatrix& a) {
  if (a.size1() == 0 || a.size2() == 0)
    return failure(std::string(operation) + ": the matrix is empty (" + sizeOf(a) + ")");
  for (std::size_t i = 0; i < a.size1(); ++i)
    for (std::size_t j = 0; j < a.size2(); ++j)
      if (!std::isfinite(a(i, j)))
        return failure(std::string(operation) + ": the entry in row " + std::to_string(i) + ", column " +
                       std::to_string(j) + " is " + std::to_string(a(i, j)));
  return {};
}

BoolResult checkSquareMatrix(const char* operation, const RealMatrix& a) {
  if (a.size1() != a.size2()) return failure(std::string(operation) + ": the matrix is not square (" + sizeOf(a) + ")");
  return checkMatrix(operation, a);
}

}  // namespace ormix::detail
