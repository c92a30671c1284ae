# SPDX-License-Identifier: MIT
"""The five frames of a puff of smoke that opens, rises and fades, as SVG of 42 x 52 points."""
import math
import random
from dataclasses import dataclass

WIDTH, HEIGHT = 42, 52
FRAMES = 5
BALLS = 38
SEED = 4
GOLDEN_ANGLE = math.pi * (3 - math.sqrt(5))


@dataclass(frozen=True)
class Ball:
    """One ball of smoke at one time. Lengths are points."""
    x: float
    y: float
    radius: float
    depth: float  # from 0, at the top of the puff, to 1


def balls(time):
    """The puff at a time from 0 to 1, its upper balls first."""
    chance = random.Random(SEED)
    spread = 10.2 + 6 * (1 - (1 - time) ** 2)
    found = []
    for number in range(BALLS):
        share = math.sqrt((number + 0.5) / BALLS)  # of the radius: evenly over the disc
        angle = number * GOLDEN_ANGLE + chance.uniform(-0.3, 0.3)
        reach = spread * share * chance.uniform(0.88, 1.08)
        left = 1 - (time / (0.16 + 1.04 * share * chance.uniform(0.8, 1.2))) ** 2.5
        size = chance.uniform(3.2, 6.2) * (1 - 0.1 * time)
        rise = 5.5 * time * chance.uniform(0.7, 1.3)
        if left > 0:
            height = math.sin(angle) * share
            found.append(Ball(WIDTH / 2 + reach * math.cos(angle),
                              29 - rise + reach * math.sin(angle) * 0.95,
                              size * left ** 0.5, (1 + height) / 2))
    return sorted(found, key=lambda ball: ball.y)


def svg(number):
    """Frame @number, from 1 on."""
    time = 0.22 * (number - 1)
    shown = balls(time)
    shadows = "".join(f'<circle cx="{ball.x:.2f}" cy="{ball.y + 0.5:.2f}" r="{ball.radius + 0.5:.2f}"/>'
                      for ball in shown)
    lit = "".join(f'<circle cx="{ball.x:.2f}" cy="{ball.y:.2f}" r="{ball.radius:.2f}"/>'
                  f'<circle cx="{ball.x:.2f}" cy="{ball.y:.2f}" r="{ball.radius:.2f}" '
                  f'fill="#5d6a79" fill-opacity="{0.38 * ball.depth:.2f}"/>'
                  for ball in shown)
    opacity = [1, .76, .6, .46, .3][number - 1]
    return f"""<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}">
<defs>
<radialGradient id="smoke" cx=".5" cy=".42" r=".62" fx=".48" fy=".12">
<stop offset="0" stop-color="#fff"/><stop offset=".4" stop-color="#f2f4f7"/>
<stop offset=".72" stop-color="#c0c8d1"/><stop offset="1" stop-color="#74808d"/>
</radialGradient>
<filter id="soft" filterUnits="userSpaceOnUse" x="0" y="0" width="{WIDTH}" height="{HEIGHT}">
<feTurbulence type="fractalNoise" baseFrequency=".09" numOctaves="3" seed="7" result="noise"/>
<feDisplacementMap in="SourceGraphic" in2="noise" scale="{2 + 6 * time:.2f}" xChannelSelector="R" yChannelSelector="G"/>
<feGaussianBlur stdDeviation="{0.4 + 0.5 * time:.2f}"/>
</filter>
</defs>
<g opacity="{min(opacity, 1):.3f}" filter="url(#soft)">
<g opacity=".5" fill="#4b5560">{shadows}</g>
<g fill="url(#smoke)">{lit}</g>
</g>
</svg>
"""
