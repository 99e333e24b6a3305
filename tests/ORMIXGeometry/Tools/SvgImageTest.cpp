#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace ormix;
using namespace ormix::geom;

TEST(SvgImage, LiesUnderItsPixelsInBothDirectionsOfY) {
  const std::string png = "\x89PNG\r\n\x1a\n";
  RowIntersections pixels;
  EXPECT_TRUE(pixels.addRun(1, 1, 3));
  for (const auto axis : {eSYA_Up, eSYA_Down}) {
    SvgWriter writer(400);
    writer.setYAxis(axis);
    EXPECT_TRUE(writer.setView({0, 0, 4, 2}));
    // What RFC 4648 writes for eight, nine and ten bytes.
    for (const char* rest : {"", "a", "ab"}) EXPECT_TRUE(writer.drawImage(png + rest, {0, 0, 4, 2}));
    EXPECT_FALSE(writer.drawImage("GIF89a", {0, 0, 4, 2}));
    EXPECT_FALSE(writer.drawImage(png, {0, 2, 4, 0}));
    EXPECT_TRUE(writer.draw(pixels));
    EXPECT_TRUE(writer.draw(Ellipse2d<omReal64>(Point2dData<omReal64>(1, 0.5), 0.5, 0.25, 0.5235987755982988)));
    std::ostringstream picture;
    EXPECT_TRUE(writer.write(picture));
    for (const char* base64 : {",iVBORw0KGgo=\"", ",iVBORw0KGgph\"", ",iVBORw0KGgphYg==\""})
      EXPECT_NE(picture.str().find(base64), std::string::npos) << picture.str();
    EXPECT_NE(picture.str().find("<image x=\"0\" y=\"0\" width=\"400\" height=\"200\""), std::string::npos);
    for (const char* part : {axis == eSYA_Down ? "M100 100L300 100 300 200 100 200Z" : "M100 100L300 100 300 0 100 0Z",
                             axis == eSYA_Down ? "rotate(30 100 50)" : "rotate(-30 100 150)"})
      EXPECT_NE(picture.str().find(part), std::string::npos) << part << '\n' << picture.str();
  }
}

}  // namespace
