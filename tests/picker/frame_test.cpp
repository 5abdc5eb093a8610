// The pass on hundreds of pictures: every byte of the frame equals the plain computation.
#include "picker/analysis.h"

#include <algorithm>

#include "objc/autorelease_pool.h"

namespace {

using namespace test;
using pictures::Kind;
using pictures::Picture;

class PickerFrame : public Analysis, public testing::WithParamInterface<Kind> {};

std::size_t differingBytes(const reference::Pixels& a, const reference::Pixels& b) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    count += (a[i].red != b[i].red) + (a[i].green != b[i].green) + (a[i].blue != b[i].blue) +
             (a[i].alpha != b[i].alpha);
  }
  return count;
}

TEST_P(PickerFrame, IsThePlainComputations) {
  const std::vector<Picture> all = GetParam().make();
  ASSERT_GE(all.size(), pictures::kLeastOfAKind);
  std::size_t differing = 0;
  for (const Picture& picture : all) {
    const objc::AutoreleasePool pool;
    UIImage* image = platformImage(picture);
    const reference::Pixels expected = reference::frameOf(squeezed(picture, image));
    ASSERT_NE(schemeOf(image), nullptr) << picture.name;
    const std::size_t here = differingBytes(dumpedFrame(), expected);
    EXPECT_EQ(here, 0U) << picture.name;
    differing += here;
  }
  RecordProperty("pictures", static_cast<int>(all.size()));
  std::printf("%zu pictures, %zu differing bytes\n", all.size(), differing);
}

INSTANTIATE_TEST_SUITE_P(Pictures, PickerFrame, testing::ValuesIn(pictures::kKinds),
                         pictures::nameOf);

}  // namespace
