#pragma once

#include <ORMIXUtil/Export.h>

#include <exception>
#include <string>

namespace ormix {

/// Root of every exception of the family: what went wrong, and where it was noticed.
class ORMIX_UTIL_API BaseException : public std::exception {
 public:
  /// \param message what went wrong, for a person
  /// \param function name or signature of the throwing function
  /// \param file,line source position of the throw
  BaseException(std::string message, std::string function, std::string file, int line);
  ~BaseException() override;

  /// The message; valid as long as the exception.
  const char* what() const noexcept override;
  /// What went wrong, for a person.
  const std::string& getMessage() const { return _message; }
  /// The signature of the throwing function.
  const std::string& getFunction() const { return _function; }
  /// The source that threw, relative to the folder of the project.
  const std::string& getFile() const { return _file; }
  /// The line of the throw in that source.
  int getLine() const { return _line; }

 private:
  std::string _message;
  std::string _function;
  std::string _file;
  int _line;
};

}  // namespace ormix
