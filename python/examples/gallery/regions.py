"""The regions of a mask: their contours with holes, equivalent ellipses (blue) and least Feret diameters (yellow)."""
import numpy as np
import ormixgeometry as og

# A mask of 300 x 180 pixels, true where some discs with blurred borders add up to neither too little nor too much.
discs = [(45, 50, 24), (88, 62, 15), (150, 40, 27), (232, 40, 18), (250, 66, 17), (40, 130, 18), (70, 146, 13),
         (130, 120, 30), (172, 132, 14), (212, 150, 9), (258, 128, 26)]
y, x = np.mgrid[:180, :300]
with np.errstate(divide="ignore"):
    total = sum((radius / np.hypot(x - center_x, y - center_y)) ** 3 for center_x, center_y, radius in discs)
mask = (total > 1) & (total < 14)

picture = og.SvgWriter(640, y_down=True)  # rows of an image run downwards
for shape in og.label(mask):
    least = og.least_feret_diameter(shape)
    picture.draw(shape, stroke="#2f4858", fill="#cfdde6", width=1.5, label=str(shape.nb_pixels))
    picture.draw(og.moments(shape).equivalent_ellipse(), stroke="#1f78b4", width=1.5)
    picture.draw(og.Segment2d(least.from_, least.to), stroke="#e0a000", width=2)
picture.write("regions.svg")
