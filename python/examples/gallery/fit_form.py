"""How round a profile is: the circles between which all points lie, and the points that touch; deviations fifty times."""
import numpy as np
import ormixgeometry as og

# A bore of radius 10 with three and eleven waves.
angle = 0.0174533 * np.arange(360)
radius = 10 + 0.02 * np.sin(3 * angle) + 0.012 * np.sin(11 * angle + 1)
points = np.stack([radius * np.cos(angle), radius * np.sin(angle)], axis=1)

form = og.roundness(points)


def enlarged(length):
    return form.radius + 50 * (length - form.radius)


# Where points are drawn: fifty times as far from the middle of the zone.
arm = points - np.array(form.point)
length = np.hypot(arm[:, 0], arm[:, 1])
drawn = arm * (enlarged(length) / length)[:, None]

picture = og.SvgWriter(480)
for limit in (form.lowest, form.highest):
    picture.draw(og.Circle2d((0, 0), enlarged(limit)), stroke="#1f78b4", width=2)
picture.draw(og.Polygon2d(np.concatenate([drawn, drawn[:1]])), stroke="#2f4858", width=1.5)
for contact in form.outer_contacts + form.inner_contacts:
    picture.draw(og.Point2d(*drawn[contact]), stroke="#c8402f", width=3)
picture.write("fit_form.svg")
