"""What pictures of the screen show: colours, and how well text stands out."""

from PIL import Image, ImageChops

# Text that is not large has to stand out at least so much: the AA level of the Web Content Accessibility Guidelines 2.1.
LEAST_CONTRAST = 4.5
# Of the pixels of a text, so many in a thousand are the inside of its strokes, without the softened edges.
INSIDE_OF_STROKES = 4


def closest(picture, colour):
    """How far the picture stays from the colour: the smallest, over its pixels, of the largest differences of red, green
    and blue; 0 where it shows just this colour."""
    difference = ImageChops.difference(picture, Image.new("RGB", picture.size, colour))
    red, green, blue = difference.split()
    return ImageChops.lighter(ImageChops.lighter(red, green), blue).getextrema()[0]


def background(picture):
    """The colour that most of it has."""
    return max(picture.getcolors(picture.width * picture.height))[1]


def luminance(colour):
    """Relative luminance, as the guidelines define it."""

    def linear(part):
        part /= 255
        return part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4

    red, green, blue = map(linear, colour)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    """From 1, the same, to 21, black on white."""
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


def text_contrast(picture):
    """How much the text on the picture stands out from what is around it. The softened edges of strokes do not count; the
    larger the picture's scale, the better it tells."""
    around = background(picture)
    colours = sorted(
        ((contrast(colour, around), count) for count, colour in picture.getcolors(picture.width * picture.height)),
        reverse=True,
    )
    inside = max(3, picture.width * picture.height * INSIDE_OF_STROKES // 1000)
    seen = 0
    for ratio, count in colours:
        seen += count
        if seen >= inside:
            return ratio
    return 1.0
