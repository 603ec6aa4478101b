#version 430 compatibility
// A pass as a compute program: the pass's own program text follows this one, and its shade()
// runs once per pixel of the target. Some graphics processors run fragment programs on a few
// of their cores only and compute programs on all of them; the arithmetic is the same, and so
// are the bytes. The pixel's centre stands where a fragment's would: half a pixel into it.
#define COMPUTE_PASS
layout(local_size_x = 8, local_size_y = 8) in;
layout(rgba8) uniform writeonly image2D Target;

vec4 shade(vec2 at);

void main()
{
    ivec2 pixel = ivec2(gl_GlobalInvocationID.xy);
    if (all(lessThan(pixel, imageSize(Target))))
        imageStore(Target, pixel, shade(vec2(pixel) + 0.5));
}
