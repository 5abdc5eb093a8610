// Pictures of eight kinds for the picker, the same ones in every run.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace pictures {

/// Rows of width * 4 bytes: red, green, blue, alpha, premultiplied, top row first.
struct Picture {
  std::string name;
  unsigned width, height;
  std::vector<std::uint8_t> rgba;
};

/// Some have 32 x 32 pixels and are used unchanged; others must be squeezed.
std::vector<Picture> singleColors();
std::vector<Picture> noise();
std::vector<Picture> gradients();
std::vector<Picture> textOnPaper();
/// Paper with three inks in different amounts, far from the paper and from each other.
std::vector<Picture> inksOnPaper();
std::vector<Picture> icons();
std::vector<Picture> photographs();
std::vector<Picture> transparent();

struct Kind {
  const char* name;
  std::vector<Picture> (*make)();
};

inline constexpr std::array<Kind, 8> kKinds{{{"SingleColors", &singleColors},
                                             {"Noise", &noise},
                                             {"Gradients", &gradients},
                                             {"TextOnPaper", &textOnPaper},
                                             {"InksOnPaper", &inksOnPaper},
                                             {"Icons", &icons},
                                             {"Photographs", &photographs},
                                             {"Transparent", &transparent}}};

/// The number of pictures of each kind, at least.
inline constexpr std::size_t kLeastOfAKind = 64;

}  // namespace pictures
