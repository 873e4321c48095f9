// SPDX-License-Identifier: GPL-3.0-or-later
#version 440

layout(location = 0) in vec4 position;
layout(location = 1) in float number;
// Column and row of the atlas, corner of the quad, level from which the marker shows; bytes as 0 to 1.
layout(location = 2) in vec4 bytes;

layout(location = 0) out vec2 texel;

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

void main()
{
    vec4 values = floor(bytes * 255.0 + 0.5);
    vec2 corner = vec2(mod(values.z, 2.0), floor(values.z / 2.0));
    texel = (values.xy + corner) / vec2(atlasColumns, atlasRows);

    bool isHidden = values.w > level || any(equal(hidden, vec4(number)));
    vec4 center = matrix * vec4(position.xy, 0.0, 1.0);
    // The renderer's y goes up or down with the graphics interface; world points count downwards.
    vec2 down = vec2(1.0, matrix[1][1] < 0.0 ? -1.0 : 1.0);
    // From the middle of the screen in device pixels, y down as the texture's; the quad's corner on a whole pixel.
    vec2 middle = center.xy / center.w * viewport * 0.5 * down;
    vec2 upperLeft = floor(middle - vec2(0.0, liftPixels) - cellPixels * 0.5 + viewport * 0.5 + 0.5) - viewport * 0.5;
    vec2 place = (upperLeft + corner * cellPixels) / viewport * 2.0 * down;
    // All corners of a hidden marker fall on one point beyond the screen.
    gl_Position = isHidden ? vec4(2.0, 2.0, 0.0, 1.0) : vec4(place, center.z / center.w, 1.0);
}
