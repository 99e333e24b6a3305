#include "Runs.h"

#include "../Frame/Errors.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

namespace ormix::python {
namespace {

// z, y, begin, end.
using Run = std::array<omInt64, 4>;

// A row or a slice beyond what int64 holds can come from an archive only.
omInt64 rowNumber(omUInt64 row) {
  if (row > static_cast<omUInt64>(std::numeric_limits<omInt64>::max()))
    raiseError("Row " + std::to_string(row) + " is beyond the numbers of an array");
  return static_cast<omInt64>(row);
}

template <class Write>
void visitRuns(const geom::RowIntersections& pixels, Write write) {
  for (omUInt64 y = pixels.getStartRow(); y < pixels.getEndRow(); ++y) {
    const geom::RowIntersections::Row row = pixels.getRow(y);
    if (row.empty()) continue;
    const omInt64 number = rowNumber(y);
    for (const geom::PixelRun& run : row) write(number, run);
  }
}

// The runs in order. Columns of `matrix` are the last ones of a run, those before are 0.
std::vector<Run> sortedRuns(const py::handle& values, py::ssize_t columns) {
  const auto matrix = matrixOf<omInt64>(values, columns, "runs");
  std::vector<Run> runs(static_cast<std::size_t>(matrix.shape(0)), Run{});
  const omInt64* from = matrix.data();
  for (std::size_t i = 0; i < runs.size(); ++i) {
    for (auto column = static_cast<std::size_t>(4 - columns); column < 4; ++column) {
      runs[i][column] = *from++;
      const bool isColumn = column >= 2;
      if (runs[i][column] < 0 || (isColumn && runs[i][column] > std::numeric_limits<omUInt32>::max()))
        throw py::value_error("runs: row " + std::to_string(i) + " has " + std::to_string(runs[i][column]) +
                              (isColumn ? ", columns are 0 to 4294967295" : ", rows are numbered from 0"));
    }
  }
  if (!std::is_sorted(runs.begin(), runs.end())) std::sort(runs.begin(), runs.end());
  return runs;
}

void checkNbRows(omUInt64 nbRows) {
  if (nbRows > s_mostRows)
    throw py::value_error("runs: from the first to the last row there are " + std::to_string(nbRows) +
                          " rows, at most " + std::to_string(s_mostRows) + " are made");
}

// The rows from the first to the last one; there is at least one run, and all have the same z.
geom::RowIntersections slice(const Run* first, const Run* last) {
  std::vector<omUInt32> nbRuns(static_cast<std::size_t>(last[-1][1] - (*first)[1]) + 1, 0);
  geom::RowIntersections::RunColl runs;
  runs.reserve(static_cast<std::size_t>(last - first));
  for (const Run* run = first; run != last; ++run) {
    ++nbRuns[static_cast<std::size_t>((*run)[1] - (*first)[1])];
    runs.push_back({static_cast<omUInt32>((*run)[2]), static_cast<omUInt32>((*run)[3])});
  }
  geom::RowIntersections rows;
  check(rows.setRows(static_cast<omUInt64>((*first)[1]), nbRuns, std::move(runs)), "RowIntersections", "runs");
  return rows;
}

// The number of rows from the first to the last one, of runs of one slice.
omUInt64 nbRowsOf(const Run* first, const Run* last) { return static_cast<omUInt64>(last[-1][1] - (*first)[1]) + 1; }

}  // namespace

py::array_t<omInt64> runsOf(const geom::RowIntersections& pixels) {
  py::array_t<omInt64> runs({static_cast<py::ssize_t>(pixels.getRunColl().size()), py::ssize_t{3}});
  omInt64* to = runs.mutable_data();
  visitRuns(pixels, [&](omInt64 y, const geom::PixelRun& run) {
    *to++ = y;
    *to++ = run.begin;
    *to++ = run.end;
  });
  return runs;
}

py::array_t<omInt64> runsOf(const geom::RowIntersections3d& voxels) {
  std::size_t nbRuns = 0;
  for (const geom::RowIntersections& rows : voxels.rowIntersectionsColl) nbRuns += rows.getRunColl().size();
  py::array_t<omInt64> runs({static_cast<py::ssize_t>(nbRuns), py::ssize_t{4}});
  omInt64* to = runs.mutable_data();
  omUInt64 z = voxels.zOffset;
  for (const geom::RowIntersections& rows : voxels.rowIntersectionsColl) {
    const omInt64 number = rowNumber(z++);
    visitRuns(rows, [&](omInt64 y, const geom::PixelRun& run) {
      *to++ = number;
      *to++ = y;
      *to++ = run.begin;
      *to++ = run.end;
    });
  }
  return runs;
}

geom::RowIntersections pixelsOfRuns(const py::handle& values) {
  const std::vector<Run> runs = sortedRuns(values, 3);
  if (runs.empty()) return {};
  checkNbRows(nbRowsOf(runs.data(), runs.data() + runs.size()));
  return slice(runs.data(), runs.data() + runs.size());
}

geom::RowIntersections3d voxelsOfRuns(const py::handle& values) {
  const std::vector<Run> runs = sortedRuns(values, 4);
  if (runs.empty()) return {};
  const omInt64 firstZ = runs.front()[0];
  // A slice without runs takes the memory of about eight rows.
  const auto nbSlices = static_cast<omUInt64>(runs.back()[0] - firstZ) + 1;
  checkNbRows(nbSlices > s_mostRows ? nbSlices : 8 * nbSlices);
  std::vector<const Run*> begins;
  omUInt64 nbRows = 0;
  const Run* const end = runs.data() + runs.size();
  for (const Run* first = runs.data(); first != end;) {
    const Run* const last = std::find_if(first, end, [&](const Run& run) { return run[0] != (*first)[0]; });
    nbRows += std::min(nbRowsOf(first, last), s_mostRows + 1);
    checkNbRows(nbRows);
    begins.push_back(first);
    first = last;
  }
  begins.push_back(end);
  geom::RowIntersections3d voxels;
  voxels.zOffset = static_cast<omUInt64>(firstZ);
  voxels.rowIntersectionsColl.resize(static_cast<std::size_t>(nbSlices));
  for (std::size_t i = 0; i + 1 < begins.size(); ++i)
    voxels.rowIntersectionsColl[static_cast<std::size_t>((*begins[i])[0] - firstZ)] = slice(begins[i], begins[i + 1]);
  return voxels;
}

}  // namespace ormix::python
