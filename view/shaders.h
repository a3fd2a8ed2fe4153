/// The programs that run on the graphics card. Space: the eye's, in metres, unless said otherwise.
#pragma once

namespace tvw::rgs::view::shader {

inline constexpr const char* kMeshVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in mat4 model;   // into the eye's space
layout(location = 6) in vec4 color;   // a: how much of the highlight
layout(location = 7) in vec4 mark;    // the node's number, in bytes
uniform mat4 projection;
uniform mat4 toShadow;                // from the eye's space
out vec3 seen;
out vec3 facing;
out vec4 paint;
out vec4 shade;
flat out vec4 number;
void main()
{
    vec4 p = model * vec4(position, 1.0);
    mat3 m = mat3(model);
    // The cofactors turn normals right under any scale, mirrored ones too.
    facing = normal.x * cross(m[1], m[2]) + normal.y * cross(m[2], m[0]) + normal.z * cross(m[0], m[1]);
    seen = p.xyz;
    paint = color;
    number = mark;
    shade = toShadow * p;
    gl_Position = projection * p;
}
)";

inline constexpr const char* kMeshFragment = R"(#version 330 core
in vec3 seen;
in vec3 facing;
in vec4 paint;
in vec4 shade;
flat in vec4 number;
uniform vec3 sun;                     // towards it, of unit length
uniform vec3 up;
uniform bool lit;
uniform bool numbers;                 // write the node's number instead of a colour
uniform bool shadowed;
uniform sampler2DShadow shadowMap;
out vec4 result;

float sunShare(float slope)
{
    if (!shadowed)
        return 1.0;
    vec3 place = shade.xyz * 0.5 + 0.5;
    if (any(lessThan(place, vec3(0.0))) || any(greaterThan(place, vec3(1.0))))
        return 1.0;
    float bias = 0.0006 + 0.0025 * (1.0 - slope);
    vec2 texel = 1.0 / vec2(textureSize(shadowMap, 0));
    float sum = 0.0;
    for (int i = 0; i < 4; ++i) {
        vec2 at = vec2(float(i & 1) - 0.5, float(i >> 1) - 0.5) * 1.4;
        sum += texture(shadowMap, vec3(place.xy + at * texel, place.z - bias));
    }
    return sum * 0.25;
}

void main()
{
    if (numbers) {
        result = number;
        return;
    }
    vec3 color = pow(paint.rgb, vec3(2.2));
    if (lit) {
        // Which side is seen is the flat face's to say: a smooth normal turns away before the face does.
        vec3 eye = -normalize(seen);
        vec3 plane = normalize(cross(dFdx(seen), dFdy(seen)));
        plane = dot(plane, eye) < 0.0 ? -plane : plane;
        vec3 n = dot(facing, facing) > 0.0 ? normalize(facing) : plane;
        n = dot(n, plane) < 0.0 ? -n : n;
        float slope = max(dot(n, sun), 0.0);
        float sky = 0.5 + 0.5 * dot(n, up);
        vec3 light = mix(vec3(0.10, 0.095, 0.09), vec3(0.34, 0.38, 0.44), sky);
        light += vec3(1.0, 0.95, 0.86) * slope * sunShare(slope);
        light += 0.08 * max(dot(n, eye), 0.0);
        vec3 halfway = normalize(sun + eye);
        float gloss = pow(max(dot(n, halfway), 0.0), 40.0) * 0.12 * step(0.001, slope);
        color = color * light + gloss;
    }
    color = mix(color, vec3(1.0, 0.42, 0.06), paint.a);
    // Far things fade into the haze of the background.
    float haze = 1.0 - exp(-max(length(seen) - 150.0, 0.0) * 0.0012);
    color = mix(color, vec3(0.035, 0.040, 0.050), clamp(haze, 0.0, 0.85));
    result = vec4(pow(color, vec3(1.0 / 2.2)), 1.0);
}
)";

inline constexpr const char* kDepthFragment = R"(#version 330 core
void main() {}
)";

inline constexpr const char* kLineVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 color;
uniform mat4 projection;
out vec4 paint;
void main()
{
    paint = color;
    gl_Position = projection * vec4(position, 1.0);
    gl_PointSize = 5.0;
}
)";

inline constexpr const char* kLineFragment = R"(#version 330 core
in vec4 paint;
out vec4 result;
void main() { result = paint; }
)";

inline constexpr const char* kBackVertex = R"(#version 330 core
out float height;
void main()
{
    vec2 corner = vec2(float((gl_VertexID & 1) * 4 - 1), float((gl_VertexID >> 1) * 4 - 1));
    height = corner.y * 0.5 + 0.5;
    gl_Position = vec4(corner, 1.0, 1.0);
}
)";

inline constexpr const char* kBackFragment = R"(#version 330 core
in float height;
out vec4 result;
void main()
{
    vec3 low = vec3(0.150, 0.158, 0.175);
    vec3 high = vec3(0.235, 0.258, 0.295);
    // A grain below one step of the colours keeps the gradient from showing bands.
    float grain = fract(sin(dot(gl_FragCoord.xy, vec2(12.9898, 78.233))) * 43758.5453) / 255.0;
    result = vec4(mix(low, high, smoothstep(0.0, 1.0, height)) + grain, 1.0);
}
)";

/// The plane y = 0 of the world round the eye.
inline constexpr const char* kGridVertex = R"(#version 330 core
uniform mat4 projection;
uniform mat3 toEye;       // from the world's directions
uniform vec3 eye;         // in the world
uniform float reach;
out vec2 place;           // in the world, from below the eye
void main()
{
    vec2 corner = vec2(float(gl_VertexID & 1) * 2.0 - 1.0, float(gl_VertexID >> 1) * 2.0 - 1.0);
    place = corner * reach;
    gl_Position = projection * vec4(toEye * vec3(place.x, -eye.y, place.y), 1.0);
}
)";

inline constexpr const char* kGridFragment = R"(#version 330 core
in vec2 place;
uniform vec3 eye;
uniform vec2 phase;       // of the eye within ten spacings
uniform float spacing;    // between lines [m]
uniform float reach;
out vec4 result;

float line(vec2 at, float width)
{
    vec2 change = max(fwidth(at), vec2(1e-6));
    vec2 near = abs(fract(at - 0.5) - 0.5) / change;
    float seen = 1.0 - min(min(near.x, near.y) / width, 1.0);
    return seen * clamp(0.6 / max(change.x, change.y), 0.0, 1.0);
}

void main()
{
    vec2 at = place + phase;
    float fade = pow(max(1.0 - length(place) / reach, 0.0), 1.5);
    float fine = line(at / spacing, 1.0) * 0.20;
    float coarse = line(at / (10.0 * spacing), 1.2) * 0.38;
    vec4 color = vec4(vec3(0.72, 0.75, 0.80), max(fine, coarse) * fade);
    vec2 world = place + eye.xz;
    vec2 axis = 1.0 - min(abs(world) / max(fwidth(world), vec2(1e-6)) / 1.5, vec2(1.0));
    color = mix(color, vec4(0.80, 0.28, 0.26, 0.75 * fade), axis.y);
    color = mix(color, vec4(0.30, 0.48, 0.86, 0.75 * fade), axis.x);
    if (color.a < 0.004)
        discard;
    result = color;
}
)";

} // namespace tvw::rgs::view::shader
