#include "pictures/pen.h"

namespace varnix::pane {

namespace {

CGPoint corner(CGRect rect, int right, int bottom) {
  return {rect.origin.x + static_cast<CGFloat>(right) * rect.size.width,
          rect.origin.y + static_cast<CGFloat>(bottom) * rect.size.height};
}

}  // namespace

void Pen::oval(CGRect rect) {
  CGContextBeginPath(context_);
  CGContextAddEllipseInRect(context_, rect);
  CGContextFillPath(context_);
}

void Pen::outline(CGRect rect, CGFloat radius) {
  const CGPoint a = corner(rect, 0, 0);
  const CGPoint b = corner(rect, 1, 0);
  const CGPoint c = corner(rect, 1, 1);
  const CGPoint d = corner(rect, 0, 1);
  CGContextBeginPath(context_);
  CGContextMoveToPoint(context_, (a.x + b.x) / 2, a.y);
  CGContextAddArcToPoint(context_, b.x, b.y, c.x, c.y, radius);
  CGContextAddArcToPoint(context_, c.x, c.y, d.x, d.y, radius);
  CGContextAddArcToPoint(context_, d.x, d.y, a.x, a.y, radius);
  CGContextAddArcToPoint(context_, a.x, a.y, b.x, b.y, radius);
  CGContextClosePath(context_);
}

void Pen::rounded(CGRect rect, CGFloat radius) {
  outline(rect, radius);
  CGContextFillPath(context_);
}

void Pen::roundedLine(CGRect rect, CGFloat radius, CGFloat width) {
  outline(rect, radius);
  CGContextSetLineWidth(context_, width);
  CGContextStrokePath(context_);
}

void Pen::triangle(CGPoint a, CGPoint b, CGPoint c) {
  CGContextBeginPath(context_);
  CGContextMoveToPoint(context_, a.x, a.y);
  CGContextAddLineToPoint(context_, b.x, b.y);
  CGContextAddLineToPoint(context_, c.x, c.y);
  CGContextClosePath(context_);
  CGContextFillPath(context_);
}

void Pen::clipToRounded(CGRect rect, CGFloat radius) {
  outline(rect, radius);
  CGContextClip(context_);
}

void Pen::clipToOval(CGRect rect) {
  CGContextBeginPath(context_);
  CGContextAddEllipseInRect(context_, rect);
  CGContextClip(context_);
}

}  // namespace varnix::pane
