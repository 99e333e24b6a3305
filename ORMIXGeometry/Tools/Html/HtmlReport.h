#pragma once

#include <ORMIXGeometry/Tools/Html/HtmlScene.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <memory>
#include <string>
#include <vector>

namespace ormix::geom {

/// What concerns a whole page.
struct HtmlOptions {
  std::string title = "Report";  ///< of the page and its first heading
  std::string language = "en";   ///< of the texts, as "en" or "pt-BR"
  /// The file of three.js, a build that defines `THREE` for plain scripts, which becomes part of pages with scenes.
  /// When empty, the environment variable ORMIX_THREE_SCRIPT, or else the path that was set when the library was built
  /// (CMake: ORMIX_THREE_SCRIPT), by default that of Debian's libjs-three.
  std::string threeScript = {};
};

/// Cells of text under columns.
struct HtmlTable {
  std::string caption = {};                         ///< may be empty
  std::vector<std::string> columns = {};            ///< their names
  std::vector<std::vector<std::string>> rows = {};  ///< cells; a row may have fewer than there are columns
};

/// A page of headings, texts, tables, pictures and scenes, one file that needs neither a server nor a network, nor
/// anything beside it.
///
/// Tables are sorted by a click on a column or by keyboard. Scenes are turned by mouse, touch or keyboard; without
/// three.js the page has pictures of them and says why. Pages follow the light or dark scheme of the reader and fit
/// phones. Texts may be anything: they are escaped, what is not UTF-8 is replaced, and pages forbid all scripts but
/// their own and all requests to a network.
///
/// What is added is in the order of the calls. A function that fails adds nothing.
class ORMIX_GEOMETRY_API HtmlReport {
 public:
  explicit HtmlReport(HtmlOptions options = {});
  ~HtmlReport();
  /// Moves the page; the other report may then only be destroyed or assigned to.
  /// @{
  HtmlReport(HtmlReport&&) noexcept;
  HtmlReport& operator=(HtmlReport&&) noexcept;
  /// @}

  /// Adds a heading. From three headings of level 2 on, the page begins with links to them.
  /// \param level 2 for a section to 6 for the smallest; others are brought into that range
  void addHeading(const std::string& text, int level = 2);

  /// Adds paragraphs, which empty lines part.
  void addText(const std::string& text);

  /// Adds a table. Columns whose cells are all numbers, or empty, are aligned and sorted as numbers. Fails when a row
  /// has more cells than there are columns.
  BoolResult addTable(const HtmlTable& table);

  /// Adds a picture. Fails when the drawing cannot be written, see SvgWriter::write().
  /// \param caption the text below the picture, which also stands for it where pictures are not seen
  BoolResult addPicture(const SvgWriter& picture, const std::string& caption);

  /// Adds a colour scale as the legend of pictures whose colours are those of `scale`.
  /// \param quantity what the values are, as "distance to the circle"
  void addLegend(const ColourScale& scale, const std::string& quantity, const std::string& unit);

  /// Adds a scene, which is seen from (1, -2, 1) at first, z being up. Fails when the scene is empty.
  /// \param caption the text below the scene, which also stands for it where it is not seen
  BoolResult addScene(const HtmlScene& scene, const std::string& caption);

  /// Adds a file, by the extension of its path: "csv" as a table, whose first line names the columns, reals
  /// with six digits; "svg", "png" and
  /// "jpg" as pictures; "stl", "obj", "ply" and "off" as scenes. Fails when it cannot be read or is of another kind.
  /// Of a mesh that can be read in part, this is shown, and the caption says why.
  /// \param caption of the table, picture or scene; the name of the file when empty
  BoolResult addFile(const std::string& path, const std::string& caption = {});

  /// The page.
  std::string toHtml() const;

  /// Writes the page to a file. An older file is replaced only when the new one is complete.
  BoolResult write(const std::string& path) const;

 private:
  struct Page;
  std::unique_ptr<Page> _page;
};

}  // namespace ormix::geom
