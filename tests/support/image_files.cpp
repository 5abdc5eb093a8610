#include "support/image_files.h"

namespace test {

namespace {

std::vector<jpeg_scan_info> manyScans() {
  std::vector<jpeg_scan_info> scans = {{3, {0, 1, 2, 0}, 0, 0, 0, 0}};
  for (int component = 0; component < 3; ++component) {
    for (int k = 1; k < 64; ++k) scans.push_back({1, {component, 0, 0, 0}, k, k, 0, 0});
  }
  return scans;
}

}  // namespace

std::string pngFile(unsigned width, unsigned height, const PngLook& look, const Bytes& packed) {
  std::string file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(
      png, &file,
      [](png_structp writer, png_bytep bytes, std::size_t length) {
        static_cast<std::string*>(png_get_io_ptr(writer))
            ->append(reinterpret_cast<char*>(bytes), length);
      },
      nullptr);
  png_set_IHDR(png, info, width, height, look.bitDepth, look.colorType,
               look.isInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (!look.palette.empty()) {
    png_set_PLTE(png, info, look.palette.data(), static_cast<int>(look.palette.size()));
  }
  if (look.transparent || !look.paletteAlpha.empty()) {
    png_set_tRNS(png, info, look.paletteAlpha.empty() ? nullptr : look.paletteAlpha.data(),
                 static_cast<int>(look.paletteAlpha.size()),
                 look.transparent ? &*look.transparent : nullptr);
  }
  png_set_check_for_invalid_index(png, 0);
  if (look.prepare) look.prepare(png, info);
  png_write_info(png, info);
  const int passes = png_set_interlace_handling(png);
  const std::size_t rowBytes = packed.size() / height;
  for (int pass = 0; pass < passes; ++pass) {
    for (std::size_t row = 0; row < height; ++row) png_write_row(png, &packed[row * rowBytes]);
  }
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return file;
}

std::string jpegFile(unsigned width, unsigned height, const JpegLook& look, const Bytes& samples) {
  jpeg_compress_struct info;
  jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* bytes = nullptr;
  unsigned long length = 0;
  jpeg_mem_dest(&info, &bytes, &length);
  info.image_width = width;
  info.image_height = height;
  info.input_components = static_cast<int>(samples.size() / width / height);
  info.in_color_space = look.given;
  jpeg_set_defaults(&info);
  jpeg_set_colorspace(&info, look.stored);
  jpeg_set_quality(&info, look.quality, TRUE);
  if (look.hasFullColor) info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
  if (look.isProgressive) jpeg_simple_progression(&info);
  const std::vector<jpeg_scan_info> scans = manyScans();
  if (look.hasManyScans) {
    info.scan_info = scans.data();
    info.num_scans = static_cast<int>(scans.size());
  }
  info.restart_in_rows = static_cast<int>(look.restartRows);
  info.write_Adobe_marker = look.hasAdobeMarker ? TRUE : FALSE;
  jpeg_start_compress(&info, TRUE);
  if (!look.app1.empty()) {
    jpeg_write_marker(&info, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(look.app1.data()),
                      static_cast<unsigned>(look.app1.size()));
  }
  if (!look.profile.empty()) {
    jpeg_write_icc_profile(&info, reinterpret_cast<const JOCTET*>(look.profile.data()),
                           static_cast<unsigned>(look.profile.size()));
  }
  Bytes rows = samples;
  while (info.next_scanline < height) {
    JSAMPROW row = &rows[info.next_scanline * (samples.size() / height)];
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  std::string file(reinterpret_cast<char*>(bytes), length);
  std::free(bytes);
  return file;
}

std::string plainPng(unsigned side, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  Bytes packed;
  for (unsigned i = 0; i < side * side; ++i) packed.insert(packed.end(), {red, green, blue});
  return pngFile(side, side, {.colorType = PNG_COLOR_TYPE_RGB}, packed);
}

}  // namespace test
