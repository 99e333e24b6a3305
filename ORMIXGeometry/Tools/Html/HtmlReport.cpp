#include <ORMIXGeometry/Tools/Html/HtmlAssets.h>
#include <ORMIXGeometry/Tools/Html/HtmlReport.h>
#include <ORMIXGeometry/Tools/Html/HtmlText.h>
#include <ORMIXGeometry/Tools/Html/PageFiles.h>
#include <ORMIXGeometry/Tools/Html/SceneParts.h>
#include <ORMIXGeometry/Tools/Svg/SvgElement.h>
#include <ORMIXSerialization/Archive/FileTarget.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <utility>

#ifndef ORMIX_THREE_SCRIPT
#define ORMIX_THREE_SCRIPT "/usr/share/javascript/three/three.min.js"
#endif

namespace ormix::geom {

using namespace detail;

/// The elements so far, and what the page needs beside them.
struct HtmlReport::Page {
  struct Section {
    std::string id, heading;
  };

  HtmlOptions options;
  std::string body;
  std::vector<Section> sections;
  std::optional<std::string> three;  ///< the script, or empty where there is none; read for the first scene
  bool hasTables = false;
  bool hasViewers = false;

  std::string threePath() const;
  bool canTurn();
  void addImage(const std::string& mediaType, const std::string& bytes, const std::string& caption);
};

namespace {

/// A text over which a script cannot end early, nor be taken for one within a comment.
std::string asScript(std::string script) {
  for (const char* mark : {"</script", "<!--"})
    for (std::size_t at = script.find(mark); at != std::string::npos; at = script.find(mark, at + 1))
      script.insert(at + 1, "\\");
  return script;
}

bool isNumber(const std::string& cell) {
  omReal64 number = 0;
  const char* const end = cell.data() + cell.size();
  return std::from_chars(cell.data(), end, number).ptr == end;
}

/// For each column whether all its cells are numbers or empty, and not all empty.
std::vector<bool> numericColumns(const HtmlTable& table) {
  std::vector<bool> hasNumbers(table.columns.size()), hasTexts(table.columns.size());
  for (const auto& row : table.rows)
    for (std::size_t column = 0; column < row.size(); ++column)
      if (!row[column].empty()) (isNumber(row[column]) ? hasNumbers : hasTexts)[column] = true;
  for (std::size_t column = 0; column < hasTexts.size(); ++column)
    hasNumbers[column] = hasNumbers[column] && !hasTexts[column];
  return hasNumbers;
}

std::string withUnit(const std::string& text, const std::string& unit) {
  return htmlText(unit.empty() ? text : text + " (" + unit + ")");
}

std::string legendOf(const ColourScale& scale, const std::string& quantity, const std::string& unit) {
  std::string html = "<div class=\"legend\"><div>" + withUnit(quantity, unit) + "</div><div class=\"ramp\" style=\"" +
                     "background:linear-gradient(to right";
  for (const std::string& stop : scale.stops()) html += "," + stop;
  html += ")\"></div><div class=\"ticks\">";
  for (const omReal64 tick : scale.ticks()) {
    const omReal64 place = 100 * (tick / 2 - scale.low() / 2) / (scale.high() / 2 - scale.low() / 2);
    html += "<span style=\"left:" + shortNumber(place) + "%\">" + shortNumber(tick) + "</span>";
  }
  return html + "</div></div>\n";
}

constexpr const char* s_help =
    "<p class=\"help\" id=\"viewer-help\">Drag or press the arrow keys to turn, pinch, scroll or press + and − to "
    "zoom, "
    "drag with Shift to move, press Home to begin again. On a phone, tap a model first.</p>\n";

}  // namespace

std::string HtmlReport::Page::threePath() const {
  if (!options.threeScript.empty()) return options.threeScript;
  const char* const given = std::getenv("ORMIX_THREE_SCRIPT");
  return given != nullptr && *given != 0 ? given : ORMIX_THREE_SCRIPT;
}

bool HtmlReport::Page::canTurn() {
  if (!three) {
    std::string script;
    three = readPageFile(threePath(), script) ? asScript(std::move(script)) : "";
    body += !three->empty() ? s_help
                            : "<p class=\"note\">These models do not turn: there is no three.js at \"" +
                                  htmlText(threePath()) + "\" (Debian has it in libjs-three).</p>\n";
  }
  return !three->empty();
}

void HtmlReport::Page::addImage(const std::string& mediaType, const std::string& bytes, const std::string& caption) {
  const std::string text = htmlText(caption);
  body += "<figure><img alt=\"" + text + "\" src=\"data:" + mediaType + ";base64,";
  appendBase64(body, bytes);
  body += "\"><figcaption>" + text + "</figcaption></figure>\n";
}

HtmlReport::HtmlReport(HtmlOptions options) : _page(std::make_unique<Page>()) { _page->options = std::move(options); }
HtmlReport::~HtmlReport() = default;
HtmlReport::HtmlReport(HtmlReport&&) noexcept = default;
HtmlReport& HtmlReport::operator=(HtmlReport&&) noexcept = default;

void HtmlReport::addHeading(const std::string& text, int level) {
  const std::string tag = "h" + std::to_string(std::clamp(level, 2, 6)), heading = htmlText(text);
  std::string id;
  if (level <= 2) {
    _page->sections.push_back({"section-" + std::to_string(_page->sections.size() + 1), heading});
    id = " id=\"" + _page->sections.back().id + "\"";
  }
  _page->body += "<" + tag + id + ">" + heading + "</" + tag + ">\n";
}

void HtmlReport::addText(const std::string& text) {
  std::istringstream lines(text);
  std::string paragraph;
  const auto close = [&] {
    if (!paragraph.empty()) _page->body += "<p>" + htmlText(paragraph) + "</p>\n";
    paragraph.clear();
  };
  for (std::string line; std::getline(lines, line);)
    if (line.find_first_not_of(" \t\r") == std::string::npos)
      close();
    else
      paragraph += (paragraph.empty() ? "" : " ") + line;
  close();
}

BoolResult HtmlReport::addTable(const HtmlTable& table) {
  for (std::size_t row = 0; row < table.rows.size(); ++row)
    if (table.rows[row].size() > table.columns.size())
      return failure("Row " + std::to_string(row) + " of a table has " + std::to_string(table.rows[row].size()) +
                     " cells for " + std::to_string(table.columns.size()) + " columns");
  const std::vector<bool> isNumeric = numericColumns(table);
  std::string& body = _page->body;
  body += "<div class=\"table\" tabindex=\"0\" role=\"region\" aria-label=\"" +
          htmlText(table.caption.empty() ? "Table" : table.caption) + "\"><table>\n";
  if (!table.caption.empty()) body += "<caption>" + htmlText(table.caption) + "</caption>\n";
  const auto cellTag = [&](const char* tag, std::size_t column) {
    return std::string("<") + tag + (isNumeric[column] ? " class=\"number\">" : ">");
  };
  body += "<thead><tr>";
  for (std::size_t k = 0; k < table.columns.size(); ++k)
    body += cellTag("th scope=\"col\"", k) + htmlText(table.columns[k]) + "</th>";
  body += "</tr></thead>\n<tbody>\n";
  for (const auto& row : table.rows) {
    body += "<tr>";
    // Cells that a row does not have stay away: a page is as long as its table, however long one row is.
    for (std::size_t k = 0; k < row.size(); ++k) body += cellTag("td", k) + htmlText(row[k]) + "</td>";
    body += "</tr>\n";
  }
  body += "</tbody></table></div>\n";
  _page->hasTables = true;
  return true;
}

BoolResult HtmlReport::addPicture(const SvgWriter& picture, const std::string& caption) {
  std::ostringstream stream;
  if (const BoolResult written = picture.write(stream); !written) return written;
  _page->addImage("image/svg+xml", stream.str(), caption);
  return true;
}

void HtmlReport::addLegend(const ColourScale& scale, const std::string& quantity, const std::string& unit) {
  _page->body += legendOf(scale, quantity, unit);
}

BoolResult HtmlReport::addScene(const HtmlScene& scene, const std::string& caption) {
  if (scene.isEmpty()) return failure("A scene of a page is empty");
  Page& page = *_page;
  if (!page.canTurn()) {
    SvgWriter picture(600);
    if (const BoolResult drawn = drawScene(picture, *scene.parts()); !drawn) return drawn;
    if (const BoolResult added = addPicture(picture, caption); !added) return added;
  } else {
    page.hasViewers = true;
    page.body += "<figure class=\"viewer\"><canvas tabindex=\"0\" role=\"application\" aria-label=\"" +
                 htmlText(caption) + "\" aria-describedby=\"viewer-help\"></canvas>\n" +
                 "<script type=\"application/json\">" + toJson(*scene.parts()) + "</script>\n<figcaption>" +
                 htmlText(caption) + "</figcaption></figure>\n";
  }
  if (const auto scale = scaleOf(*scene.parts())) addLegend(*scale, scene.parts()->quantity, scene.parts()->valueUnit);
  return true;
}

BoolResult HtmlReport::addFile(const std::string& path, const std::string& caption) {
  const PageFile file = pageFileOf(path);
  const std::string text = caption.empty() ? file.name : caption;
  if (file.kind == eFK_Mesh) {
    HtmlScene scene;
    std::string problem;
    const BoolResult drawn = drawMeshFile(scene, path, problem);
    return drawn ? addScene(scene, problem.empty() ? text : text + " (in part: " + problem + ")") : drawn;
  }
  if (file.kind == eFK_Other) return failure("\"" + path + "\" is neither a table, a picture nor a mesh");
  std::string bytes;
  if (const BoolResult read = readPageFile(path, bytes); !read) return read;
  if (file.kind == eFK_Table) {
    HtmlTable table = parseTable(bytes);
    table.caption = text;
    return addTable(table);
  }
  _page->addImage(file.mediaType, bytes, text);
  return true;
}

std::string HtmlReport::toHtml() const {
  const Page& page = *_page;
  const std::string title = htmlText(page.options.title);
  std::string html = "<!DOCTYPE html>\n<html lang=\"" + htmlText(page.options.language) +
                     "\">\n<head>\n<meta charset=\"utf-8\">\n"
                     "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                     "<meta name=\"color-scheme\" content=\"light dark\">\n"
                     "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; "
                     "style-src 'unsafe-inline'; script-src 'unsafe-inline'\">\n<title>" +
                     title + "</title>\n<style>\n" + std::string(s_reportCss) + "</style>\n</head>\n<body>\n<h1>" +
                     title + "</h1>\n";
  if (page.sections.size() > 2) {
    html += "<nav aria-label=\"Sections\"><ul>\n";
    for (const Page::Section& section : page.sections)
      html += "<li><a href=\"#" + section.id + "\">" + section.heading + "</a></li>\n";
    html += "</ul></nav>\n";
  }
  html += "<main>\n" + page.body + "</main>\n";
  const auto addScript = [&html](std::string_view script) {
    html.append("<script>\n").append(script).append("</script>\n");
  };
  if (page.hasTables) addScript(s_tablesJs);
  if (page.hasViewers) {
    addScript(*page.three);
    addScript(s_viewerJs);
  }
  return html += "</body>\n</html>\n";
}

BoolResult HtmlReport::write(const std::string& path) const {
  const std::string html = toHtml();
  FileTarget target(path);
  BoolResult written = target.open();
  if (written) {
    target.stream().write(html.data(), static_cast<std::streamsize>(html.size()));
    written = target.commit();
  }
  return written ? written : failure("Cannot write \"" + path + "\": " + written.getMessage());
}

}  // namespace ormix::geom
