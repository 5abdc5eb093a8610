// The pass itself: upload the image, draw the frame, read it back.
#include <bit>
#include <cstdlib>

#include "objc/owned.h"
#include "picker/CQColorPicker_object.h"
#include "picker/frame.h"
#include "picker/frame_size.h"
#include "picker/quad.h"

namespace varnix {

using picker::Frame;

namespace {

/// The offset of a vertex's member in the bound buffer, as the pointer that GL expects.
const void* atOffset(std::size_t offset) { return std::bit_cast<const void*>(offset); }

void pointAttribute(GLuint slot, GLint components, std::size_t offset) {
  glVertexAttribPointer(slot, components, GL_FLOAT, GL_FALSE, sizeof(Vertex), atOffset(offset));
}

}  // namespace

GLuint ColorPicker::setupTextureFromImage(UIImage* image) {
  CGImageRef cgImage = send(image, UIImage::CGImage);
  std::size_t width = cgImage == nullptr ? 0 : CGImageGetWidth(cgImage);
  std::size_t height = cgImage == nullptr ? 0 : CGImageGetHeight(cgImage);
  const std::size_t bytesPerRow = width * 4;
  const objc::Owned<void*, &std::free> pixels(std::calloc(height, bytesPerRow));
  if (pixels == nullptr) width = height = 0;
  if (width != 0 && height != 0) {
    const objc::Owned<CGContextRef, &CGContextRelease> context(
        CGBitmapContextCreate(pixels, width, height, 8, bytesPerRow, CGImageGetColorSpace(cgImage),
                              kCGImageAlphaPremultipliedLast));
    const CGRect whole{{0, 0}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}};
    if (context != nullptr) CGContextDrawImage(context, whole, cgImage);
  }
  if (!isContextCurrent()) return _aTexture;
  if (glIsTexture(_aTexture) == GL_FALSE) glGenTextures(1, &_aTexture);
  glBindTexture(GL_TEXTURE_2D, _aTexture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, static_cast<GLsizei>(width), static_cast<GLsizei>(height),
               0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
  return _aTexture;
}

void ColorPicker::renderDominant() {
  if (!isContextCurrent()) return;
  glEnable(GL_BLEND);
  glBlendFunc(GL_ONE, GL_ZERO);
  glEnable(GL_TEXTURE_2D);  // not an ES 2.0 capability: GL sets an error and goes on
  glViewport(0, 0, kTotalWidth, kTotalWidth);

  glBindBuffer(GL_ARRAY_BUFFER, _vertexBuffer);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, _indexBuffer);
  pointAttribute(_positionSlot, 3, offsetof(Vertex, position));
  pointAttribute(_colorSlot, 4, offsetof(Vertex, color));
  pointAttribute(_texCoordSlot, 2, offsetof(Vertex, textureCoordinate));

  glUniform1i(static_cast<GLint>(_proccesedWidthSlot), kProccesedWidth);
  glUniform1i(static_cast<GLint>(_totalWidthSlot), kTotalWidth);
  glActiveTexture(GL_TEXTURE0);
  glBindTexture(GL_TEXTURE_2D, _aTexture);
  glUniform1i(static_cast<GLint>(_textureUniform), 0);

  glDrawElements(GL_TRIANGLES, sizeof Indices, GL_UNSIGNED_BYTE, atOffset(0));
}

UIColor* ColorPicker::backgroundColorOfFrame(NSUInteger width, NSUInteger height) {
  return Frame(width, height, isContextCurrent()).mostFrequent().opaque();
}

UIImage* ColorPicker::dumpFrame(NSUInteger width, NSUInteger height, UIColor** biggestAlphaColor) {
  Frame frame(width, height, isContextCurrent());
  if (biggestAlphaColor != nullptr) *biggestAlphaColor = frame.mostFrequent().opaque();
  const std::size_t bytesPerRow = width * 4;
  // The provider is not released: it lives as long as the process.
  CGDataProviderRef provider =
      CGDataProviderCreateWithData(nullptr, frame.leak(), bytesPerRow * height, &freeImageData);
  const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
  const objc::Owned<CGImageRef, &CGImageRelease> image(
      CGImageCreate(width, height, 8, 32, bytesPerRow, space, kCGImageAlphaNone, provider, nullptr,
                    false, CGColorRenderingIntent::standard));
  return UIImage::imageWithCGImage(image);
}

void freeImageData(void*, const void* data, std::size_t) { std::free(const_cast<void*>(data)); }

}  // namespace varnix
