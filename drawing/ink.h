// Text and symbols, noted while they are drawn together with the pixels below them: what can be
// read on a picture, and how well.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drawing/canvas.h"

namespace varnix::drawing {

enum class InkKind : unsigned char { text, largeText, symbol };

/// The contrast that the guidelines ask for: 4.5, and 3 for large text and symbols.
constexpr double neededContrast(InkKind kind) { return kind == InkKind::text ? 4.5 : 3; }

/// Where something can be read worst.
struct Place {
  Box box{};   ///< the square that decides, in points
  Box mark{};  ///< the whole word or symbol
  InkKind kind = InkKind::text;
  double contrast = 0;    ///< 1 to 21
  Color ink{}, ground{};  ///< as they are seen there
};

/// The worst place of a surface, which is dyed itself or lies below what is written on it.
struct Reading {
  std::string surface;  ///< "CLASS PROPERTY"
  Place worst;
};

/// What is noted on one canvas.
class Inks {
 public:
  /// The worst place of each surface, in the order in which they were first drawn. What was covered
  /// later does not count, even if it looks the same, nor does a surface on which nothing can be
  /// seen.
  ///
  /// A place is a square of four points. Its contrast is that of the mean luminance of the ink with
  /// the mean luminance of what was there before, over the pixels that the ink covers by half or
  /// more, of which there must be an eighth: so no single pixel decides. If no square has as many,
  /// the word or symbol is one place. The worst is the one that misses most of what it needs.
  std::vector<Reading> readings(const Canvas& canvas) const;

 private:
  friend class Ink;
  friend class On;
  friend class Inactive;

  struct Pixel {
    int x, y;
    std::uint32_t ground, laid;  ///< 0xRRGGBB before and after
  };
  struct Noted {
    std::vector<const char*> surfaces;
    Color color;
    InkKind kind;
    std::vector<Pixel> pixels;
    std::vector<Pixel> beside;  ///< some that it leaves as they were
  };

  std::vector<const char*> below_;
  bool isInactive_ = false;
  std::vector<Noted> noted_;
};

/// While it exists, what is drawn inside the box is one word or symbol of that colour. It counts
/// for the surface that the colour dyes, and for those that it lies on. Paths begin and end inside.
class Ink {
 public:
  Ink(const Canvas& canvas, const Box& box, const Color& color, InkKind kind);
  ~Ink();
  Ink(const Ink&) = delete;
  Ink& operator=(const Ink&) = delete;

 private:
  const Canvas& canvas_;
  const Color color_;
  const InkKind kind_;
  bool isNoted_;
};

/// While it exists, what is drawn lies on that surface.
class On {
 public:
  On(const Canvas& canvas, const char* surface);
  ~On();
  On(const On&) = delete;
  On& operator=(const On&) = delete;

 private:
  Inks* inks_;
};

/// While it exists, what is drawn does nothing at the moment: the guidelines ask nothing of it.
class Inactive {
 public:
  explicit Inactive(const Canvas& canvas);
  ~Inactive();
  Inactive(const Inactive&) = delete;
  Inactive& operator=(const Inactive&) = delete;

 private:
  Inks* inks_;
};

}  // namespace varnix::drawing
