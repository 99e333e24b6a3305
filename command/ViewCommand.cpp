#include <command/Subcommands.h>
#include <command/frame/Errors.h>
#include <command/io/Outputs.h>
#include <command/io/Pictures.h>
#include <command/io/Regions.h>
#include <command/io/Rows.h>
#include <command/io/Temporary.h>
#include <spawn.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>

namespace ormix::command {

namespace {

/// A new file in the folder for temporary files, which stays.
std::string createTemporary(const std::string& extension) {
  std::string path = temporaryPattern(extension);
  const int file = ::mkstemps(path.data(), static_cast<int>(extension.size()));
  if (file < 0) throw DataError("a temporary file cannot be created: " + std::string(std::strerror(errno)));
  ::close(file);
  return path;
}

/// Shows a file in the program that the desktop has for it.
void open(const std::string& path) {
  const std::string absolute = std::filesystem::absolute(path).string();
  const char* const words[] = {"xdg-open", absolute.c_str(), nullptr};
  pid_t process = 0;
  const int error = ::posix_spawnp(&process, words[0], nullptr, nullptr, const_cast<char* const*>(words), environ);
  if (error != 0) throw DataError("xdg-open cannot be started: " + std::string(std::strerror(error)));
}

/// html or svg: as --to says, else as the extension of the output.
std::string formatOf(const Arguments& arguments) {
  const std::string extension = std::filesystem::path(arguments.text("output")).extension().string();
  return arguments.text("to", extension == ".svg" ? "svg" : "html");
}

int run(const Arguments& arguments) {
  const std::string format = formatOf(arguments);
  std::string title;
  Contents contents;
  bool isEmpty = true;
  const int status = arguments.forEachInput(arguments.inputs(), [&](const std::string& name) {
    readDocuments(arguments, name, [&](const Document& document) {
      addTo(contents, arguments, document);
      isEmpty = false;
    });
    title += (title.empty() ? "" : ", ") + std::filesystem::path(name).filename().string();
  });
  if (isEmpty) return status;
  PictureOptions options;
  options.size = arguments.real("width", options.size);
  options.hasNumbers = arguments.has("numbers");
  const std::string path = arguments.has("output") ? arguments.text("output") : createTemporary('.' + format);
  if (format == "svg")
    writeSvg(path, contents, options);
  else
    writeHtml(path, contents, title, options);
  if (!arguments.has("output")) std::cout << path << '\n';
  flushOutput();
  if (arguments.has("open") && path != "-") open(path);
  return status;
}

}  // namespace

Command viewCommand() {
  std::vector<Option> options{
      outputOption("where it is written; a temporary file, whose path is printed, when not given"),
      {"to", 0, eOptionKind::Choice, "html|svg",
       "a page or a picture; as the extension of the output says, else a page"},
      {"open", 0, eOptionKind::Flag, "", "show it, by xdg-open"},
      {"width", 'w', eOptionKind::Length, "PIXELS", "the larger side of a picture; 800 when not given"},
      {"numbers", 0, eOptionKind::Flag, "", "draw the number of each entity, as \"ormix measure\" counts them"},
      fromOption()};
  options.insert(options.end(), regionOptions().begin(), regionOptions().end());
  return {"view",
          "[FILE...]",
          "a page or a picture of what is in files",
          "Shows what all files hold, in one page that needs no network: entities of the plane in a picture, those of "
          "space in "
          "a scene that is turned by mouse or touch, and their measures in a table; regions over their image. Or in a "
          "picture "
          "in SVG, where meshes are seen from the front and above.",
          {},
          std::move(options),
          {{"ormix view contours.txt --numbers -o contours.svg", "All rings of a text"},
           {"ormix view --threshold otsu blobs.png -o blobs.svg", "The outlines of regions over their image"},
           {"ormix view part.stl", "A mesh that turns; the path of the page is printed"}},
          run};
}

}  // namespace ormix::command
