#version 330 core

in vec4 fragmentColor;
in vec2 UV;

uniform sampler2D Texture0; // distance to the glyph's edge in alpha: 0.5 on the edge, more inside
uniform vec4 outlineColor;
uniform float outlineWidth; // in the units of the distance; 0 for none

out vec4 pixelColor;

// On the ridge of a stroke, and where the field ends, neighbouring pixels are equally far from the edge. Half the change
// that a straight edge shows from pixel to pixel keeps strokes narrower than a pixel from vanishing there.
float leastWidth()
{
    const float FieldWidth = 16.0; // texels from distance 0 to 1
    vec2 texel = UV * vec2(textureSize(Texture0, 0));
    float change = min(length(dFdx(texel)), length(dFdy(texel))) / FieldWidth;
    return min(0.5 * change, 0.5 - outlineWidth); // the end of the field stays clear
}

void main()
{
    float dist = texture(Texture0, UV).a;
    float width = max(fwidth(dist), leastWidth());
    float alpha = smoothstep(0.5 - outlineWidth - width, 0.5 - outlineWidth + width, dist);
    float border = smoothstep(0.5 - width, 0.5 + width, dist);

    vec4 glyphColor = fragmentColor;
    if (outlineWidth > 0.001) {
        glyphColor = mix(outlineColor, fragmentColor, border);
    }
    pixelColor = vec4(glyphColor.rgb, glyphColor.a * alpha);
}
