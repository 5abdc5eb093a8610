#include "ImageIO/exif.h"

#include <libexif/exif-data.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

namespace host::imageio {

namespace {

/// UIImageOrientation for Exif's 1 to 8.
constexpr std::array<int, 8> kOrientations = {0, 4, 1, 5, 6, 3, 7, 2};

struct Unref {
  void operator()(ExifData* data) const { exif_data_unref(data); }
  void operator()(ExifEntry* entry) const { exif_entry_unref(entry); }
};
using Data = std::unique_ptr<ExifData, Unref>;
using Entry = std::unique_ptr<ExifEntry, Unref>;

}  // namespace

int orientationFromExif(const std::uint8_t* bytes, std::size_t length) {
  const Data data(exif_data_new());
  if (data == nullptr) return 0;
  // Read only what the file says, and add no entries that it should have.
  exif_data_unset_option(data.get(), EXIF_DATA_OPTION_FOLLOW_SPECIFICATION);
  exif_data_load_data(data.get(), bytes, static_cast<unsigned>(length));
  ExifEntry* entry = exif_content_get_entry(data->ifd[EXIF_IFD_0], EXIF_TAG_ORIENTATION);
  if (entry == nullptr || entry->format != EXIF_FORMAT_SHORT || entry->size < 2) return 0;
  const std::size_t value = exif_get_short(entry->data, exif_data_get_byte_order(data.get()));
  return value >= 1 && value <= kOrientations.size() ? kOrientations[value - 1] : 0;
}

std::string exifWithOrientation(int orientation) {
  const auto place = std::find(kOrientations.begin(), kOrientations.end(), orientation);
  const Data data(exif_data_new());
  const Entry entry(exif_entry_new());
  if (place == kOrientations.end() || data == nullptr || entry == nullptr) return {};
  exif_data_set_byte_order(data.get(), EXIF_BYTE_ORDER_MOTOROLA);
  exif_content_add_entry(data->ifd[EXIF_IFD_0], entry.get());
  exif_entry_initialize(entry.get(), EXIF_TAG_ORIENTATION);
  if (entry->data == nullptr) return {};
  exif_set_short(entry->data, EXIF_BYTE_ORDER_MOTOROLA,
                 static_cast<ExifShort>(place - kOrientations.begin() + 1));
  unsigned char* bytes = nullptr;
  unsigned length = 0;
  exif_data_save_data(data.get(), &bytes, &length);
  std::string segment;
  if (bytes != nullptr) segment.assign(reinterpret_cast<const char*>(bytes), length);
  std::free(bytes);
  return segment;
}

}  // namespace host::imageio
