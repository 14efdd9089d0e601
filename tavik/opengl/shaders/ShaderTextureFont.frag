#version 330 core

in vec4 fragmentColor;
in vec2 UV;

uniform sampler2D myTextureSampler; // coverage in alpha

out vec4 pixelColor;

void main()
{
    pixelColor = fragmentColor * vec4(1.0, 1.0, 1.0, texture(myTextureSampler, UV).a);
}
