#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include "support/LogCapture.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

std::string text(const std::string& domain, int id) {
  return LogMessageManager::getInstance("ORMIXGeometry").getMessage(domain, id);
}

// Log filters and stored logs know these texts and domain names, slips included.
TEST(Messages, AreInTheCatalogueUnderTheirRunTimeNames) {
  EXPECT_EQ(text("N5ormix4geom14eEntityMessage6domainE", 0),
            "Can't add row intersection with row range [%d, %d[ to existing row range [%d, %d[, ranges should not "
            "intersect");
  EXPECT_EQ(text("N5ormix4geom14eEntityMessage6domainE", 13), "Input shared pointer should not be null");
  EXPECT_EQ(text("N5ormix4geom14eEntityMessage6domainE", 17), "Shape 2d constructor has encountered an interal error");
  EXPECT_EQ(text("N5ormix4geom14eEntityMessage6domainE", 20),
            "Row index mismatch for shapes merge, main shape row index = %d should be lower or equal to new  shape row "
            "index = %d");
  EXPECT_EQ(text("N5ormix4geom14eEntityMessage6domainE", 21), "Half edges with indexes %d and %d should be linked");
  EXPECT_EQ(text("N5ormix4geom17eTransformMessage6domainE", 0),
            "Failed to apply %s transformation on point 2d with coordinates {%f, %f}");
  EXPECT_EQ(text("N5ormix4geom17eTransformMessage6domainE", 5),
            "Input geometric transformation %s is not yet supported for geometric entities transformation");
  EXPECT_EQ(text("N5ormix4geom15eMeasureMessage6domainE", 0), "Measure %s failed for geometry entity %s");
  EXPECT_EQ(text("N5ormix4geom18eEstimationMessage6domainE", 1), "Can't initialize circle 2d cost function\n%s");
  EXPECT_EQ(text("N5ormix4geom18eEstimationMessage6domainE", 13),
            "First collection of points size %d mismatch with second one size %d");
  EXPECT_EQ(text("N5ormix4geom18eEstimationMessage6domainE", 21), "Can't initialize sphere 3d cost function\n%s");
}

TEST(Messages, AreAsManyAsTheirDomainHas) {
  const auto& manager = getORMIXGeometryLogMessageManager();
  EXPECT_EQ(manager.getName(), "ORMIXGeometry");
  EXPECT_FALSE(manager.hasMessage("N5ormix4geom14eEntityMessage6domainE", 22));
  EXPECT_FALSE(manager.hasMessage("N5ormix4geom17eTransformMessage6domainE", 6));
  EXPECT_FALSE(manager.hasMessage("N5ormix4geom21eORMIXGeometryMessage6domainE", 0));
}

TEST(Messages, AreFormattedInOrder) {
  EXPECT_EQ(
      formatMessage<eEntityMessage>(eEntityMessage::eEM_RowRangesIntersect, 1, 5, 3, 9),
      "Can't add row intersection with row range [1, 5[ to existing row range [3, 9[, ranges should not intersect");
  EXPECT_EQ(formatMessage<eTransformMessage>(eTransformMessage::eTM_Point2dFailed, "eGT2DT_Homography", 1.5, -2.0),
            "Failed to apply eGT2DT_Homography transformation on point 2d with coordinates {1.500000, -2.000000}");
  EXPECT_EQ(formatMessage<eTransformMessage>(eTransformMessage::eTM_Point3dFailed, "eT3DT_Scale", 1.5, -2.0, 0.25),
            "Failed to apply eT3DT_Scale transformation on point 3d with coordinates {1.500000, -2.000000, 0.250000}");
}

TEST(Failure, IsLoggedAtErrorLevelAndThrown) {
  EXPECT_EQ(getORMIXGeometryLoggerName(), getBaseLoggerName() + ".ORMIXGeometry");
  const support::LogCapture log(getORMIXGeometryLoggerName());
  const std::string expected = "Measure eM2DT_Area failed for geometry entity eE2DT_Segment";
  try {
    AreaMsr2d::measure(Segment2d<omReal64>(0, 0, 1, 1));
    FAIL() << "a segment has no area";
  } catch (const ORMIXGeometryException& exception) {
    EXPECT_EQ(exception.what(), expected);
    EXPECT_NE(exception.getFile().find("Measure/2d/AreaMsr2d"), std::string::npos) << exception.getFile();
    EXPECT_NE(exception.getFunction().find("AreaMsr2d::measure(const ormix::geom::BaseGeometryEntity2d&)"),
              std::string::npos)
        << exception.getFunction();
    EXPECT_GT(exception.getLine(), 0);
  }
  EXPECT_EQ(log.messages(), (support::LogCapture::Messages{{40000, expected}}));
}

}  // namespace
