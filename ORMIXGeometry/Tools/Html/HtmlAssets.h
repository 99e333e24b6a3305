#pragma once

#include <string_view>

/// \file
/// The style and the scripts of pages, which the build makes of the files beside this one; not installed.

namespace ormix::geom::detail {

extern const std::string_view s_reportCss;  ///< report.css
extern const std::string_view s_tablesJs;   ///< tables.js
extern const std::string_view s_viewerJs;   ///< viewer.js

}  // namespace ormix::geom::detail
