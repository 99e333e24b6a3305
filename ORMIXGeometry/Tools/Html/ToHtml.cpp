#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Html/ToHtml.h>
#include <ORMIXGeometry/Tools/Svg/SvgElement.h>

#include <array>

namespace ormix::geom {

namespace {

/// Eight colours that colour-blind people tell apart (Okabe2008), without black and yellow, which surfaces do not show
/// well.
constexpr std::array<const char*, 6> s_palette{"#0072b2", "#e69f00", "#009e73", "#d55e00", "#56b4e9", "#cc79a7"};

void require(const BoolResult& result) {
  if (!result) logAndThrow(result.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

/// The measure as text; empty where the entity has none.
template <class Measure, class Entity>
std::string measured(const Entity& entity) {
  omReal64 value = 0;
  return Measure().measure(entity, value) ? detail::shortNumber(value) : "";
}

/// "Circle2d" of "ormix::geom::Circle2d<ormix::omReal64>".
std::string shortName(const std::string& className) {
  const std::size_t end = className.find('<');
  return className.substr(className.rfind(':', end) + 1, end - className.rfind(':', end) - 1);
}

}  // namespace

struct HtmlView::Drawing {
  SvgWriter picture;
  HtmlScene scene;
  HtmlTable planar{"", {"no.", "Entity", "Area", "Perimeter"}, {}};
  HtmlTable spatial{"", {"no.", "Entity", "Area", "Volume"}, {}};

  /// The number of the next entity, and its colour.
  std::size_t next() const { return planar.rows.size() + spatial.rows.size(); }
  std::string colour() const { return s_palette[next() % s_palette.size()]; }
};

HtmlView::HtmlView() : _drawing(std::make_unique<Drawing>()) {}
HtmlView::~HtmlView() = default;

void HtmlView::checkNotNull(const void* pointer) {
  if (pointer == nullptr)
    logAndThrow("A null pointer cannot be shown in a page", __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

void HtmlView::add(const BaseGeometryEntity2d& entity) {
  Drawing& d = *_drawing;
  require(d.picture.draw(entity, {d.colour(), d.colour() + "40", 1.5, ""}));
  d.planar.rows.push_back({std::to_string(d.next() + 1), shortName(entity.getClassName()), measured<AreaMsr2d>(entity),
                           measured<PerimeterMsr2d>(entity)});
}

void HtmlView::add(const BaseGeometryEntity3d& entity) {
  Drawing& d = *_drawing;
  require(d.scene.draw(entity, {d.colour(), 1}));
  d.spatial.rows.push_back({std::to_string(d.next() + 1), shortName(entity.getClassName()), measured<AreaMsr3d>(entity),
                            measured<VolumeMsr3d>(entity)});
}

template <class T>
void HtmlView::add(const TriMesh3d<T>& mesh) {
  Drawing& d = *_drawing;
  require(d.scene.draw(mesh, HtmlSceneStyle{d.colour(), 1}));
  d.spatial.rows.push_back(
      {std::to_string(d.next() + 1), "Mesh", detail::shortNumber(area(mesh)), detail::shortNumber(volume(mesh))});
}

void HtmlView::appendTo(HtmlReport& report) const {
  const Drawing& d = *_drawing;
  if (!d.planar.rows.empty()) {
    require(report.addPicture(d.picture, "Entities of the plane"));
    require(report.addTable(d.planar));
  }
  if (!d.scene.isEmpty()) {
    require(report.addScene(d.scene, "Entities of space"));
    require(report.addTable(d.spatial));
  }
}

template ORMIX_GEOMETRY_API void HtmlView::add(const TriMesh3d<omInt32>&);
template ORMIX_GEOMETRY_API void HtmlView::add(const TriMesh3d<omUInt32>&);
template ORMIX_GEOMETRY_API void HtmlView::add(const TriMesh3d<omReal32>&);
template ORMIX_GEOMETRY_API void HtmlView::add(const TriMesh3d<omReal64>&);

}  // namespace ormix::geom
