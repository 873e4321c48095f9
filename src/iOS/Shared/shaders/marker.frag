// SPDX-License-Identifier: GPL-3.0-or-later
#version 440

layout(location = 0) in vec2 texel;
layout(location = 0) out vec4 color;

layout(std140, binding = 0) uniform Block {
    mat4 matrix;
    vec4 hidden;
    vec2 viewport;
    float cellPixels;
    float liftPixels;
    float level;
    float atlasColumns;
    float atlasRows;
    float opacity;
};
layout(binding = 1) uniform sampler2D atlas;

void main()
{
    color = texture(atlas, texel) * opacity;
}
