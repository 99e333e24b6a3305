#pragma once

#include <ORMIXGeometry/Tools/Html/HtmlScene.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

/// \file
/// What a scene is made of, as a page has it; not installed.

namespace ormix::geom::detail {

/// What the indices of a part are: triples, pairs or single points.
enum eScenePartKind { eSP_Triangles, eSP_Lines, eSP_Points };

/// A ball: the frame of coordinates that are relative to its centre and radius.
struct SceneFrame {
  std::array<omReal64, 3> center{};
  omReal64 radius = 1;  ///< positive
};

/// One draw call, or two where it has edges.
struct ScenePart {
  eScenePartKind kind = eSP_Points;
  SceneFrame frame;
  std::vector<omReal32> positions;  ///< x, y, z of each vertex in the frame, in [-1, 1]
  std::vector<omUInt32> indices;    ///< valid; none for points, which are all vertices
  std::vector<omUInt32> edges;      ///< pairs of vertices, between which a line is drawn over triangles
  std::vector<omUInt32> softEdges;  ///< pairs of vertices, between which the line is faint
  std::vector<omReal64> values;     ///< one a vertex, or none; NaN where there is none
  bool isSmooth = false;            ///< triangles stand for a curved surface
  bool isOriented = false;          ///< triangles have an inside, which is darker
  HtmlSceneStyle style;
};

/// A plan, whose square is made when the rest of the scene is known.
struct ScenePlane {
  std::array<omReal64, 3> normal;  ///< of length 1
  omReal64 rho;
  HtmlSceneStyle style;
};

/// A line, of which a segment is shown when the rest of the scene is known.
struct SceneLine {
  std::array<omReal64, 3> point;      ///< nearest to the origin
  std::array<omReal64, 3> direction;  ///< of length 1
  HtmlSceneStyle style;
};

struct SceneParts {
  std::vector<ScenePart> parts;
  std::vector<ScenePlane> planes;
  std::vector<SceneLine> lines;
  std::string unit;       ///< of the coordinates
  std::string quantity;   ///< what the values are
  std::string valueUnit;  ///< of the values
  std::optional<ColourScale> scale;
};

/// The ball around all parts and the point of each plan and each line that is nearest to the origin.
SceneFrame frameOf(const SceneParts& scene);

/// The scale of the values; nothing where no part has any.
std::optional<ColourScale> scaleOf(const SceneParts& scene);

/// The square of a plan around the foot of the scene's centre, as large as the scene.
ScenePart squareOf(const ScenePlane& plane, const SceneFrame& all);

/// The segment of a line around the foot of the scene's centre, as long as the scene.
ScenePart segmentOf(const SceneLine& line, const SceneFrame& all);

/// Draws the scene as SvgWriter can: triangles from the farthest to the nearest. Of large meshes a simplified one.
BoolResult drawScene(SvgWriter& writer, const SceneParts& scene);

/// The scene as JSON for viewer.js, numbers relative to frameOf(). It can stand in a script element.
std::string toJson(const SceneParts& scene);

}  // namespace ormix::geom::detail
