#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# usage: pillow.py read FAMILY FOLDER [WIDEST]
#        pillow.py write MODE PICTURE FAMILY
# Reads the images of an icon family, up to WIDEST pixels, with Pillow into FOLDER/ELEMENT.png as 8-bit
# RGBA, or writes a family of a picture that is converted to a mode of Pillow.
import sys

from PIL import IcnsImagePlugin, Image


def rgba(image):
    if image.mode.startswith('I'): # 16-bit gray
        image = image.point(lambda value: value * (1 / 257) + 0.5).convert('L')
    return image.convert('RGBA')


def read(family, folder, widest=1024):
    with Image.open(family) as image:
        sizes, elements = image.info['sizes'], image.icns.dct
    for size in sizes:
        if size[0] * size[2] > int(widest):
            continue
        with Image.open(family) as image:
            image.size = size
            image.load()
            element = next(code for code, _ in IcnsImagePlugin.IcnsFile.SIZES[size] if code in elements)
            rgba(image).save(f'{folder}/{element.decode()}.png')


def write(mode, picture, family):
    with Image.open(picture) as image:
        if mode == 'I;16':
            image = image.convert('I').point(lambda value: value * 251)
        elif mode == 'P':
            image = image.convert('RGB')
        image.convert(mode).save(family)


globals()[sys.argv[1]](*sys.argv[2:])
