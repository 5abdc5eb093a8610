// One pass of the picker, compared with the least and the most that it could cost.
#include <unistd.h>

#include <fstream>

#include "bare_pass.h"
#include "measures.h"
#include "objc/autorelease_pool.h"
#include "picker/CQColorPicker.h"
#include "picker/frame_size.h"
#include "pixels.h"
#include "platform/OpenGLES.h"
#include "table.h"
#include "timing.h"

namespace bench {

namespace {

constexpr NSUInteger kSide = kTotalWidth;

UIColor* pass(CQColorPicker* picker, UIImage* image) {
  send(picker, CQColorPicker::setupOpenGL);
  send(picker, CQColorPicker::setupTextureFromImage, image);
  send(picker, CQColorPicker::renderDominant);
  return send(picker, CQColorPicker::colorWithBiggerCount, kSide, kSide);
}

void pooledPass(CQColorPicker* picker, UIImage* image) {
  const objc::AutoreleasePool pool;
  pass(picker, image);
}

/// Forgets what the picker's context holds, so that the next pass makes all of it again.
void forgetObjects(CQColorPicker* picker) {
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  for (const char* name : {"_vertexBuffer", "_indexBuffer", "_colorRenderBuffer",
                           "_depthRenderBuffer", "_program", "_aTexture"}) {
    objc_ivar* ivar = class_getInstanceVariable(picker->isa, name);
    *reinterpret_cast<GLuint*>(reinterpret_cast<char*>(picker) + ivar_getOffset(ivar)) = 0;
  }
}

/// The cost of a pass that makes everything again, in ordinary passes. Its context grows by 0.4 MB
/// each time, and that is part of the cost, so the middle of many is taken. Both kinds take turns.
double passesOfOneAnew(CQColorPicker* kept, UIImage* image) {
  const auto forgetful = objc::make<CQColorPicker>();
  std::vector<double> least;
  std::vector<double> anew;
  for (int i = 0; i < 500; ++i) {
    least.push_back(bestOf(1, 1, [&] { pooledPass(kept, image); }));
    anew.push_back(bestOf(1, 1, [&] { pooledPass(forgetful, image); }));
    forgetObjects(forgetful);
  }
  return median(anew) / median(least);
}

double residentMegabytes() {
  std::ifstream file("/proc/self/statm");
  double size = 0;
  double resident = 0;
  file >> size >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// Checks that the two do the same work.
bool drawTheSame(CQColorPicker* picker, UIImage* image, BarePass& bare, const Pixels& pixels) {
  const objc::AutoreleasePool pool;
  pass(picker, image);
  std::vector<std::uint8_t> ours(bare.frame().size());
  glReadPixels(0, 0, kTotalWidth, kTotalWidth, GL_RGBA, GL_UNSIGNED_BYTE, ours.data());
  bare.bind();
  bare.run(pixels.bytes.data());
  bare.unbind();
  return ours == bare.frame();
}

}  // namespace

bool measurePass() {
  const Pixels pixels = generatedPixels(kTotalWidth, kTotalWidth);
  const auto image = imageOver(pixels);
  const auto picker = objc::make<CQColorPicker>();
  pooledPass(picker, image);  // opens the display the way the stand-in needs it
  const auto bare = BarePass::make();
  if (bare == nullptr || !drawTheSame(picker, image, *bare, pixels)) return false;
  for (int i = 0; i < 100; ++i) pooledPass(picker, image);

  const double before = residentMegabytes();
  for (int i = 0; i < 2000; ++i) pooledPass(picker, image);
  const double growth = residentMegabytes() - before;

  // The two take turns, so that a slow moment of the machine affects both.
  double ours = 1e18;
  double least = 1e18;
  for (int turn = 0; turn < 20; ++turn) {
    ours = std::min(ours, bestOf(40, 1, [&] { pooledPass(picker, image); }));
    bare->bind();
    least = std::min(least, bestOf(40, 1, [&] { bare->run(pixels.bytes.data()); }));
    bare->unbind();
  }
  report("one pass, us", ours / 1000, Goal::none());
  report("one pass, in bare passes", ours / least, Goal::atMost(1.15));
  report("a pass that makes everything anew, in passes", passesOfOneAnew(picker, image),
         Goal::atLeast(2.5));
  report("2,000 passes, MB more memory", growth, Goal::atMost(1));
  return true;
}

}  // namespace bench
