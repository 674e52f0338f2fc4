// The keyboard: where its keys lie, which are down, and what colour they have.
//
// The keyboard texture is 256 pixels wide, one for each key code, and 3 high: line 0 says whether the key is down,
// line 1 whether it went down, line 2 flips with every press. The codes of letters are those of ASCII.

const float PITCH = 0.158;      // from key to key
const float KEY_HALF = 0.064;   // half a key's side
const int SPACE = 32;

// Key codes, row by row from above.
const int CODES[26] = int[26](
    81, 87, 69, 82, 84, 89, 85, 73, 79, 80,
    65, 83, 68, 70, 71, 72, 74, 75, 76,
    90, 88, 67, 86, 66, 78, 77);

// Typed when nobody else does.
const int TUNE_LENGTH = 14;
const int TUNE[TUNE_LENGTH] = int[TUNE_LENGTH](80, 73, 88, 69, 76, 71, 82, 79, 86, 69, 0, 0, 0, 0);
const float BEAT = 0.42;        // seconds for a letter

struct Key
{
    int code;    // 0 between the rows and beside them
    vec2 center;
};

// The key whose field holds the point p.
Key keyAt(vec2 p)
{
    Key key = Key(0, vec2(0.0));
    float row = floor(1.5 - p.y / PITCH);
    if (row < 0.0 || row > 2.0) return key;
    int count = row < 0.5 ? 10 : row < 1.5 ? 9 : 7;
    int first = row < 0.5 ? 0 : row < 1.5 ? 10 : 19;
    // Real keyboards shift the rows a little: by a quarter and by three quarters of a key.
    float left = -5.0 + (row < 0.5 ? 0.0 : row < 1.5 ? 0.35 : 0.85);
    float column = floor(p.x / PITCH - left);
    if (column < 0.0 || column >= float(count)) return key;
    key.code = CODES[first + int(column)];
    key.center = PITCH * vec2(left + column + 0.5, 1.0 - row);
    return key;
}

// How far down a key is, from 0 to 1: by hand, or by the tune.
float keyDown(sampler2D keyboard, int code, float time)
{
    if (code == 0) return 0.0;
    float hand = texelFetch(keyboard, ivec2(code, 0), 0).x;
    float isStopped = texelFetch(keyboard, ivec2(SPACE, 2), 0).x;
    float beat = time / BEAT;
    int letter = TUNE[int(beat) % TUNE_LENGTH];
    float tune = letter == code && fract(beat) < 0.45 && isStopped < 0.5 ? 1.0 : 0.0;
    return max(hand > 0.5 ? 1.0 : 0.0, tune);
}

// Colours run over the keyboard like a rainbow laid on its side.
vec3 keyColor(vec2 center)
{
    vec3 wave = 0.5 + 0.5 * cos(6.2832 * (center.x * 0.52 - center.y * 0.5 + vec3(0.05, 0.38, 0.68)));
    return pow(wave, vec3(2.2)) * vec3(1.15, 0.80, 1.25) + 0.02;
}
