// The picker's pass with nothing around it: direct calls of the driver, in a context that stays
// bound.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace bench {

class BarePass {
 public:
  /// Null if there is no driver.
  static std::unique_ptr<BarePass> make();
  ~BarePass();
  BarePass(const BarePass&) = delete;
  BarePass& operator=(const BarePass&) = delete;

  /// Makes its context the calling thread's, or stops that.
  bool bind() const;
  void unbind() const;

  /// Uploads 32 x 32 pixels, draws, and reads the frame back.
  void run(const std::uint8_t* pixels);
  const std::vector<std::uint8_t>& frame() const { return frame_; }

 private:
  struct Driver;

  BarePass();
  bool setUp();

  std::unique_ptr<Driver> driver_;
  void* display_ = nullptr;
  void* context_ = nullptr;
  std::vector<std::uint8_t> frame_;
};

}  // namespace bench
