#include <images/PngFile.h>
#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <stdexcept>

namespace ormix::images {

namespace {

/// Deflate has no more than 1032 bytes for one, and a byte no more than eight pixels.
constexpr omUInt64 s_nbPixelsPerByte = 1032 * 8, s_maxNbPixels = omUInt64(1) << 30;

void requireSize(omUInt64 width, omUInt64 height, std::size_t nbBytes) {
  if (width * height > std::min(s_maxNbPixels, s_nbPixelsPerByte * nbBytes))
    throw std::runtime_error(
        "it declares " + std::to_string(width) + " x " + std::to_string(height) + " pixels, more than " +
        (width * height > s_maxNbPixels ? "2^30" : "its " + std::to_string(nbBytes) + " bytes hold"));
}

[[noreturn]] void refuse(const png_image& png) {
  throw std::runtime_error(std::string("no PNG image: ") + png.message);
}

/// The bytes that are not read yet, and why reading stopped.
struct PngSource {
  const char* at;
  const char* end;
  char why[128] = "";
};

void readBytes(png_structp png, png_bytep to, std::size_t size) {
  auto* const source = static_cast<PngSource*>(png_get_io_ptr(png));
  if (static_cast<std::size_t>(source->end - source->at) < size) png_error(png, "it ends too early");
  std::memcpy(to, source->at, size);
  source->at += size;
}

void stopReading(png_structp png, png_const_charp why) {
  auto* const source = static_cast<PngSource*>(png_get_error_ptr(png));
  std::strncpy(source->why, why, sizeof source->why - 1);
  std::longjmp(png_jmpbuf(png), 1);
}

void ignoreWarning(png_structp, png_const_charp) {}

/// A file that is read by steps. libpng leaves a step by a jump when it fails: a step must not own anything.
class PngSteps {
 public:
  explicit PngSteps(const std::string& bytes) : _source{bytes.data(), bytes.data() + bytes.size()} {
    _png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &_source, stopReading, ignoreWarning);
    if (_png) _info = png_create_info_struct(_png);
    if (!_info) throw std::bad_alloc();
    png_set_read_fn(_png, &_source, readBytes);
  }
  ~PngSteps() { png_destroy_read_struct(&_png, &_info, nullptr); }
  PngSteps(const PngSteps&) = delete;
  PngSteps& operator=(const PngSteps&) = delete;

  template <class Step>
  void take(const Step& step) {
    if (setjmp(png_jmpbuf(_png)) != 0) throw std::runtime_error(std::string("no PNG image: ") + _source.why);
    step(_png, _info);
  }

 private:
  PngSource _source;
  png_structp _png = nullptr;
  png_infop _info = nullptr;
};

}  // namespace

bool isPng(const std::string& bytes) {
  return bytes.size() >= 8 && png_sig_cmp(reinterpret_cast<png_const_bytep>(bytes.data()), 0, 8) == 0;
}

GrayImage decodeGray(const std::string& bytes) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&png, bytes.data(), bytes.size())) refuse(png);
  try {
    requireSize(png.width, png.height, bytes.size());
    png.format = PNG_FORMAT_GRAY;
    GrayImage image{png.width, png.height, std::vector<omUInt8>(PNG_IMAGE_SIZE(png))};
    const png_color white{255, 255, 255};
    if (!png_image_finish_read(&png, &white, image.pixels.data(), 0, nullptr)) refuse(png);
    return image;
  } catch (...) {
    png_image_free(&png);
    throw;
  }
}

ValueImage decodeValues(const std::string& bytes) {
  PngSteps steps(bytes);
  ValueImage image;
  int colourType = 0, nbBits = 0;
  png_uint_32 width = 0, height = 0;
  steps.take([&](png_structp png, png_infop info) {
    png_read_info(png, info);
    png_get_IHDR(png, info, &width, &height, &nbBits, &colourType, nullptr, nullptr, nullptr);
  });
  requireSize(width, height, bytes.size());
  image.width = width;
  image.height = height;
  image.nbBits = static_cast<unsigned>(nbBits);
  image.isIndexed = colourType == PNG_COLOR_TYPE_PALETTE;
  image.hasColour = !image.isIndexed && (colourType & PNG_COLOR_MASK_COLOR) != 0;
  std::size_t nbRowBytes = 0;
  steps.take([&](png_structp png, png_infop info) {
    png_set_packing(png);
    png_set_strip_alpha(png);
    if (image.hasColour)
      png_set_rgb_to_gray(png, PNG_ERROR_ACTION_NONE, PNG_RGB_TO_GRAY_DEFAULT, PNG_RGB_TO_GRAY_DEFAULT);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    nbRowBytes = png_get_rowbytes(png, info);
  });
  std::vector<omUInt8> rows(nbRowBytes * image.height);
  std::vector<png_bytep> rowColl(image.height);
  for (std::size_t y = 0; y < image.height; ++y) rowColl[y] = rows.data() + y * nbRowBytes;
  steps.take([&](png_structp png, png_infop) { png_read_image(png, rowColl.data()); });
  image.pixels.resize(image.width * image.height);
  const std::size_t nbBytes = nbBits == 16 ? 2 : 1;
  if (nbRowBytes < nbBytes * image.width) throw std::runtime_error("no PNG image: its rows are too short");
  for (std::size_t y = 0; y < image.height; ++y)
    for (std::size_t x = 0; x < image.width; ++x) {
      const omUInt8* const value = rowColl[y] + nbBytes * x;
      image.pixels[y * image.width + x] = static_cast<omUInt16>(nbBytes == 2 ? value[0] << 8 | value[1] : value[0]);
    }
  return image;
}

std::string encodeGray(const GrayImage& image) {
  constexpr std::size_t greatestSide = PNG_UINT_31_MAX;
  if (image.width > greatestSide || image.height > greatestSide)
    throw std::runtime_error("the image is too large for a PNG file");
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(image.width);
  png.height = static_cast<png_uint_32>(image.height);
  png.format = PNG_FORMAT_GRAY;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(png);
  std::string bytes(size, '\0');
  if (!png_image_write_to_memory(&png, bytes.data(), &size, 0, image.pixels.data(), 0, nullptr))
    throw std::runtime_error(png.message);
  bytes.resize(size);
  return bytes;
}

}  // namespace ormix::images
