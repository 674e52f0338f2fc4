// First steps
//
// A fragment shader is one small program that runs for every pixel of the picture, for all of them at once. It is
// told where its pixel lies and answers with a colour. It can't see what its neighbours do. Everything on the
// screen has to come out of the place, the time and the mouse.
//
// Change something, play again, and see what happens. The lines below are live controls: they stand in the tree
// beside the messages, and a click there brings up a slider or a list. A slider can also move its value by itself,
// in waves. The comment behind a uniform gives its branch in the tree, a colon, what it does, and in brackets the
// range and the value at the start, which floats write with a point. The value behind "=" is for programs that don't
// read these comments.

uniform float Discs = 11.0;  // field: rows of discs [3.0..40.0, 11.0]
uniform float Reach = 0.55;  // field: how far the pull of the mouse reaches [0.1..1.5, 0.55]
uniform int Waves = 3;       // field!waves: how many of the three there are [0..3, 3]
uniform float Drift = 1.0;   // field!waves: speed [0.0..4.0, 1.0]

// The values of these become a part of the text, so a change starts the shader anew. They can be numbers, words from
// a list, of which @ marks the one at the start, or names for #ifdef. The tree shows the whole comment.

#define RIM 1.0       // rim of the discs in pixels [0.5..12.0, 1.0]
#define COLORS sunset // colours [@sunset, dusk, iris, candy]
#define BALLS         // look of the discs [@BALLS, COINS]

const vec3 sunset = vec3(0.00, 0.13, 0.42);
const vec3 dusk = vec3(0.56, 0.36, 0.22);
const vec3 iris = vec3(0.30, 0.08, 0.52);
const vec3 candy = vec3(0.92, 0.48, 0.20);

// Three triples of numbers make a palette: red, green and blue swing like three waves around a middle value, each
// shifted against the others. x from 0 to 1 runs through all its colours once.
vec3 palette(float x)
{
    vec3 middle = vec3(0.62, 0.45, 0.50);
    vec3 swing = vec3(0.38, 0.38, 0.42);
    return middle + swing * cos(6.2832 * (x + COLORS));
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    // Step 1: a place that doesn't depend on the window's size. fragCoord counts pixels from the lower left
    // corner. Now (0, 0) is the middle and the picture is one unit high.
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;

    // Step 2: the mouse in the same units. iMouse.z is above 0 while the button is down. Without it a point
    // that wanders by itself takes the mouse's place.
    vec2 mouse = (iMouse.xy - 0.5 * iResolution.xy) / iResolution.y;
    if (iMouse.z <= 0.0) mouse = vec2(0.55 * cos(iTime * 0.7), 0.26 * sin(iTime * 1.1));

    // Step 3: a grid. floor() numbers the cells, fract() is the place inside the cell. Every second row is moved
    // by half a cell, as in a honeycomb.
    vec2 grid = p * Discs;
    float row = floor(grid.y);
    grid.x += 0.5 * mod(row, 2.0);
    vec2 cell = vec2(floor(grid.x), row);
    vec2 local = fract(grid) - 0.5;
    vec2 center = (cell + 0.5 - vec2(0.5 * mod(row, 2.0), 0.0)) / Discs; // the disc's middle, in units of p

    // Step 4: a size for each disc. All pixels of a cell compute the same size, because it depends on the
    // cell's middle only: waves that run through the field, and a bump around the mouse.
    float time = iTime * Drift;
    float wave = 0.0;
    if (Waves > 0) wave = sin(center.x * 5.0 + time * 1.3);
    if (Waves > 1) wave *= sin(center.y * 6.0 - time);
    if (Waves > 2) wave += sin(length(center) * 9.0 - time * 1.7);
    float near = exp(-dot(center - mouse, center - mouse) / (Reach * Reach * 0.12));
    float radius = 0.20 + 0.075 * wave + 0.26 * near;
    radius = clamp(radius, 0.04, 0.49);

    // Step 5: the shape. length() is the distance from the disc's middle. A hard comparison would give steps at
    // the rim; smoothstep() blends over the width of one pixel instead.
    float pixel = Discs / iResolution.y * RIM;
    float distance = length(local);
    float disc = smoothstep(radius + pixel, radius - pixel, distance);

    // Step 6: colour. The palette's place comes from the wave and from the nearness of the mouse. Pretending
    // that the disc is half a ball gives it a direction that it faces, and that gives light and shade.
    vec3 color = palette(0.12 * wave + 0.28 * center.x + 0.30 * near + 0.05);
    float height = sqrt(max(1.0 - dot(local, local) / (radius * radius), 0.0));
    vec3 normal = normalize(vec3(local / radius, height + 0.15));
    vec3 lamp = normalize(vec3(mouse - center, 0.35));
    float light = 0.28 + 0.85 * max(dot(normal, lamp), 0.0);
    float shine = pow(max(dot(normal, normalize(lamp + vec3(0.0, 0.0, 1.0))), 0.0), 40.0);
#ifdef BALLS
    vec3 ball = color * light + 0.55 * shine;
#else
    vec3 ball = color;
#endif

    // Step 7: put it together. The ground is a dark version of the same palette with a soft light at the mouse
    // and a shadow below each ball; mix() lays the ball over it.
    vec3 ground = vec3(0.035, 0.040, 0.075) + 0.16 * palette(0.28 * p.x + 0.45) * exp(-3.0 * length(p - mouse));
    float shadow = smoothstep(radius * 1.5, radius * 0.6, length(local + vec2(-0.06, 0.10)));
    ground *= 1.0 - 0.7 * shadow;
    color = mix(ground, ball, disc);

    fragColor = vec4(sqrt(color), 1.0); // screens want the square root of light, roughly
}
