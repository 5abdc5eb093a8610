// The quad that covers the frame: corners with the image's coordinates, two triangles.
#pragma once

#include "platform/OpenGLES.h"

struct Vertex {
  GLfloat position[3];
  GLfloat color[4];  ///< the shader takes it and ignores it
  GLfloat textureCoordinate[2];
};
static_assert(sizeof(Vertex) == 36);

inline constexpr Vertex Vertices[] = {
    {{1, -1, 0}, {1, 0, 0, 1}, {1, 0}},
    {{1, 1, 0}, {0, 1, 0, 1}, {1, 1}},
    {{-1, 1, 0}, {0, 0, 1, 1}, {0, 1}},
    {{-1, -1, 0}, {0, 0, 0, 1}, {0, 0}},
};

inline constexpr GLubyte Indices[] = {0, 1, 2, 2, 3, 0};
