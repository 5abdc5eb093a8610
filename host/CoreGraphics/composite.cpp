// Paints onto a context, under its masks: images that limit what is drawn.
#include "CoreGraphics/drawing.h"

namespace host {

namespace {

struct FreePattern {
  void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using Pattern = std::unique_ptr<cairo_pattern_t, FreePattern>;

/// All masks combined into one, in cairo's current space.
Pattern together(cairo_t* cairo, const std::vector<CGContext::Mask>& masks, double opacity) {
  cairo_push_group_with_content(cairo, CAIRO_CONTENT_ALPHA);
  cairo_set_source_rgba(cairo, 0, 0, 0, opacity);
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  cairo_paint(cairo);
  cairo_set_operator(cairo, CAIRO_OPERATOR_DEST_IN);
  for (const auto& mask : masks) {
    cairo_set_matrix(cairo, &mask.place);
    cairo_set_source(cairo, mask.pattern.get());
    cairo_paint(cairo);
  }
  return Pattern(cairo_pop_group(cairo));
}

/// Paints the source as far as the masks cover it.
void paintUnder(cairo_t* cairo, const std::vector<CGContext::Mask>& masks, double opacity) {
  if (masks.size() > 1 || opacity < 1)
    return cairo_mask(cairo, together(cairo, masks, opacity).get());
  cairo_set_matrix(cairo, &masks[0].place);
  cairo_mask(cairo, masks[0].pattern.get());
}

/// Makes the result that there would be without masks and clip the source, to replace the target.
void paintAside(cairo_t* cairo, cairo_surface_t* target, double opacity) {
  cairo_push_group(cairo);
  cairo_reset_clip(cairo);
  cairo_save(cairo);
  cairo_identity_matrix(cairo);
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  cairo_set_source_surface(cairo, target, 0, 0);
  cairo_paint(cairo);
  cairo_restore(cairo);
  cairo_paint_with_alpha(cairo, opacity);
  cairo_pop_group_to_source(cairo);
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
}

void paint(cairo_t* cairo, CGContext* context, double opacity) {
  const auto& masks = context->state().masks;
  if (masks.empty()) return cairo_paint_with_alpha(cairo, opacity);
  if (cairo_get_operator(cairo) == CAIRO_OPERATOR_OVER) return paintUnder(cairo, masks, opacity);
  // Under a mask, pixman does not apply the mask to the source's blue in the hue modes, and cairo
  // lets other modes reach beyond the mask.
  paintAside(cairo, context->surface.get(), opacity);
  paintUnder(cairo, masks, 1);
}

}  // namespace

void composite(CGContext* context, const std::function<bool(cairo_t*)>& prepare, double opacity) {
  const Drawing drawing(context);
  cairo_t* cairo = drawing.cairo();
  cairo_save(cairo);
  // Some operators reach beyond what is drawn; the clip stops them.
  if (prepare(cairo)) paint(cairo, context, opacity);
  cairo_restore(cairo);
}

}  // namespace host

extern "C" HOST_EXPORT void CGContextClipToMask(CGContextRef context, CGRect rect,
                                                CGImageRef image) {
  if (context == nullptr || image == nullptr) return;
  cairo_t* cairo = context->cairo.get();
  CGContext::Mask mask{Strong<CGImage>::retain(image), nullptr, {}};
  cairo_save(cairo);
  if (host::setImage(context, cairo, rect, image, host::ImageUse::mask)) {
    mask.pattern = {cairo_pattern_reference(cairo_get_source(cairo)), &cairo_pattern_destroy};
    cairo_get_matrix(cairo, &mask.place);
  }
  cairo_restore(cairo);
  // Outside the rectangle nothing is covered.
  if (mask.pattern == nullptr || !host::clipTo(cairo, rect)) return host::clipAll(cairo);
  context->state().masks.push_back(std::move(mask));
}
