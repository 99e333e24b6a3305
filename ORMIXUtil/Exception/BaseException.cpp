#include <ORMIXUtil/Exception/BaseException.h>

#include <utility>

namespace ormix {

BaseException::BaseException(std::string message, std::string function, std::string file, int line)
    : _message(std::move(message)), _function(std::move(function)), _file(std::move(file)), _line(line) {}

BaseException::~BaseException() = default;

const char* BaseException::what() const noexcept { return _message.c_str(); }

}  // namespace ormix
