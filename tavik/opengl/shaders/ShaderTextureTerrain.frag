#version 330 core

// Mixes a map picture with a relief: colours taken from a ramp by height, shaded by the surface normals.

in vec4 fragmentColor;
in vec2 UV;

uniform sampler2D Texture0; // map picture
uniform sampler2D Texture1; // normal in rgb, 0..1 for -1..1; height in alpha
uniform sampler1D Texture2; // colour ramp over the height

uniform vec3 lightDirection; // the way the light travels
uniform int shadingOn;
uniform float terrainShadingFactor; // 0 flat, 1 the dark side is black
uniform float terrainContrast;
uniform float terrainBrightness;
uniform float osmTerrain; // 1 only the map picture, 0 only the relief

out vec4 pixelColor;

void main()
{
    vec4 terrain = texture(Texture1, UV);
    vec3 rampColor = texture(Texture2, terrain.a).rgb;

    float light = 1.0;
    if (shadingOn != 0) {
        vec3 normal = normalize((terrain.rgb - 0.5) * 2.0);
        light = max(dot(normalize(-lightDirection), normal), 0.0);
    }
    float brightness = (1.0 - terrainShadingFactor) + light * terrainShadingFactor;

    vec4 mapColor = texture(Texture0, UV) * vec4(fragmentColor.rgb * brightness, fragmentColor.a);
    vec4 reliefColor = vec4(rampColor * brightness, 1.0);
    vec4 mixed = mapColor * osmTerrain + reliefColor * (1.0 - osmTerrain);

    pixelColor = vec4((terrainContrast * (mixed.rgb - 0.5) + 0.5) * terrainBrightness, mixed.a);
}
