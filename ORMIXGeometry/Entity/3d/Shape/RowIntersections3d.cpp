#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>

#include <string>
#include <utility>

namespace ormix::geom {

namespace {

constexpr std::string_view s_slicesKey = "rowIntersectionsColl";

BoolResult brokenSlices(const std::string& why) { return failure("Key \"" + std::string(s_slicesKey) + "\": " + why); }

/// All slices as four arrays, as they are archived.
struct PackedSlices {
  std::vector<omUInt64> startRowColl;
  std::vector<omUInt32> nbRowsColl;  // by slice
  std::vector<omUInt32> nbRunsColl;  // by row
  RowIntersections::RunColl runColl;

  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("startRowColl", self.startRowColl) && item("nbRowsColl", self.nbRowsColl) &&
           item("nbRunsColl", self.nbRunsColl) && item("runColl", self.runColl);
  }
};

PackedSlices pack(const std::vector<RowIntersections>& slices) {
  PackedSlices packed;
  for (const RowIntersections& slice : slices) {
    packed.startRowColl.push_back(slice.getStartRow());
    packed.nbRowsColl.push_back(static_cast<omUInt32>(slice.getNbRows()));
    for (omUInt64 row = slice.getStartRow(); row < slice.getEndRow(); ++row)
      packed.nbRunsColl.push_back(static_cast<omUInt32>(slice.getRow(row).size()));
    packed.runColl.insert(packed.runColl.end(), slice.getRunColl().begin(), slice.getRunColl().end());
  }
  return packed;
}

/// Checks every declared number before it is used: a slice takes no more rows and runs than are left.
BoolResult unpack(const PackedSlices& packed, std::vector<RowIntersections>& slices) {
  if (packed.startRowColl.size() != packed.nbRowsColl.size())
    return brokenSlices("start rows and numbers of rows are not equally many");
  auto nbRuns = packed.nbRunsColl.begin();
  auto run = packed.runColl.begin();
  std::vector<RowIntersections> unpacked(packed.startRowColl.size());
  for (std::size_t slice = 0; slice < unpacked.size(); ++slice) {
    if (packed.nbRowsColl[slice] > packed.nbRunsColl.end() - nbRuns)
      return brokenSlices("there are fewer rows than those of the slices");
    const std::vector<omUInt32> rows(nbRuns, nbRuns + packed.nbRowsColl[slice]);
    nbRuns += packed.nbRowsColl[slice];
    omUInt64 nbSliceRuns = 0;
    for (const omUInt32 nbRowRuns : rows) nbSliceRuns += nbRowRuns;
    if (nbSliceRuns > static_cast<omUInt64>(packed.runColl.end() - run))
      return brokenSlices("there are fewer runs than those of the rows");
    const auto runEnd = run + static_cast<std::ptrdiff_t>(nbSliceRuns);
    const BoolResult sound = unpacked[slice].setRows(packed.startRowColl[slice], rows, {run, runEnd});
    if (!sound) return brokenSlices(sound.getMessage());
    run = runEnd;
  }
  if (nbRuns != packed.nbRunsColl.end()) return brokenSlices("there are more rows than those of the slices");
  if (run != packed.runColl.end()) return brokenSlices("there are more runs than those of the rows");
  slices = std::move(unpacked);
  return {};
}

}  // namespace

omUInt64 getNbVoxels(const RowIntersections3d& rowIntersections) {
  omUInt64 count = 0;
  for (const RowIntersections& slice : rowIntersections.rowIntersectionsColl) count += slice.getNbPixels();
  return count;
}

BoolResult writeItem(BaseOArchive& archive, std::string_view key, const RowIntersections3d& rowIntersections) {
  const PackedSlices packed = pack(rowIntersections.rowIntersectionsColl);
  BoolResult result = archive.beginSection(key);
  if (result) result = ormix::writeItem(archive, "zOffset", rowIntersections.zOffset);
  if (result) result = archive.beginSection(s_slicesKey);
  if (!result) return result;
  PackedSlices::fields(packed, [&](const char* field, const auto& values) {
    result = ormix::writeItem(archive, field, values);
    return static_cast<bool>(result);
  });
  if (result) result = archive.endSection();
  return result ? archive.endSection() : result;
}

BoolResult readItem(BaseIArchive& archive, std::string_view key, RowIntersections3d& rowIntersections) {
  RowIntersections3d read;
  PackedSlices packed;
  BoolResult result = archive.beginSection(key);
  if (result) result = ormix::readItem(archive, "zOffset", read.zOffset);
  if (result) result = archive.beginSection(s_slicesKey);
  if (!result) return result;
  PackedSlices::fields(packed, [&](const char* field, auto& values) {
    result = ormix::readItem(archive, field, values);
    return static_cast<bool>(result);
  });
  if (result) result = archive.endSection();
  if (result) result = archive.endSection();
  if (result) result = unpack(packed, read.rowIntersectionsColl);
  if (result) rowIntersections = std::move(read);
  return result;
}

}  // namespace ormix::geom
