# SPDX-License-Identifier: MIT
"""The drawing of a puff of smoke that opens into a ring, rises and fades, in five frames."""
import math
import random
from dataclasses import dataclass

WIDTH, HEIGHT = 42, 52  # points
OPACITIES = [1, 0.76, 0.6, 0.46, 0.3]  # of the frames
FRAMES = len(OPACITIES)
INTERVAL = 0.22  # between two frames, of the time until the last ball is gone

BALLS = 38
SEED = 4  # of the balls' random sizes and ways: a puff that stays round
GOLDEN_ANGLE = math.pi * (3 - math.sqrt(5))


@dataclass(frozen=True)
class Ball:
    """One ball of smoke at one time. Lengths are points."""
    x: float
    y: float
    radius: float
    depth: float  # from 0, at the top of the puff, to 1

    def circle(self, grow=0.0, drop=0.0, attributes=""):
        return (f'<circle cx="{self.x:.2f}" cy="{self.y + drop:.2f}" '
                f'r="{self.radius + grow:.2f}"{attributes}/>')


def balls(time):
    """The puff at a time from 0 to 1, the upper balls first. The inner ones shrink earlier."""
    chance = random.Random(SEED)
    spread = 10.2 + 6 * (1 - (1 - time) ** 2)
    found = []
    for number in range(BALLS):
        share = math.sqrt((number + 0.5) / BALLS)  # of the spread: evenly over the disc
        angle = number * GOLDEN_ANGLE + chance.uniform(-0.3, 0.3)
        reach = spread * share * chance.uniform(0.88, 1.08)
        left = 1 - (time / (0.16 + 1.04 * share * chance.uniform(0.8, 1.2))) ** 2.5
        radius = chance.uniform(3.2, 6.2) * (1 - 0.1 * time)
        rise = 5.5 * time * chance.uniform(0.7, 1.3)
        if left > 0:
            found.append(Ball(x=WIDTH / 2 + reach * math.cos(angle),
                              y=29 - rise + 0.95 * reach * math.sin(angle),
                              radius=radius * math.sqrt(left),
                              depth=(1 + share * math.sin(angle)) / 2))
    return sorted(found, key=lambda ball: ball.y)


def svg(number):
    """Frame number 1 to 5."""
    time = INTERVAL * (number - 1)
    shown = balls(time)
    outlines = "".join(ball.circle(grow=0.5, drop=0.5) for ball in shown)
    lit = "".join(
        ball.circle() + ball.circle(attributes=f' fill="#5d6a79" fill-opacity="{0.38 * ball.depth:.2f}"')
        for ball in shown)
    return f"""<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}">
<defs>
<radialGradient id="smoke" cx=".5" cy=".42" r=".62" fx=".48" fy=".12">
<stop offset="0" stop-color="#fff"/><stop offset=".4" stop-color="#f2f4f7"/>
<stop offset=".72" stop-color="#b6bfc9"/><stop offset="1" stop-color="#65717e"/>
</radialGradient>
<filter id="soft" filterUnits="userSpaceOnUse" x="0" y="0" width="{WIDTH}" height="{HEIGHT}">
<feTurbulence type="fractalNoise" baseFrequency=".09" numOctaves="3" seed="7" result="noise"/>
<feDisplacementMap in="SourceGraphic" in2="noise" scale="{2 + 6 * time:.2f}"
xChannelSelector="R" yChannelSelector="G"/>
<feGaussianBlur stdDeviation="{0.4 + 0.5 * time:.2f}"/>
</filter>
</defs>
<g opacity="{OPACITIES[number - 1]}" filter="url(#soft)">
<g opacity="{0.5 + 0.3 * time:.2f}" fill="#434d58">{outlines}</g>
<g fill="url(#smoke)">{lit}</g>
</g>
</svg>
"""
