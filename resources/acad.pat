;; Hatch patterns, lengths in inches on paper. Below a name stand families of parallel lines:
;; angle, point of the first line (x, y), step to the next line (along it, across it), then dashes
;; (positive), gaps (negative) and dots (0); without any the lines are unbroken.
*SOLID, filled whole
45, 0,0, 0,.125
*ANGLE, corners in rows
0, 0,0, 0,.275, .2,-.075
90, 0,0, 0,.275, .2,-.075
*ANSI31, slanted lines
45, 0,0, 0,.125
*ANSI32, slanted lines in pairs
45, 0,0, 0,.375
45, .1767767,0, 0,.375
*ANSI33, slanted lines, every other one broken
45, 0,0, 0,.25
45, .1767767,0, 0,.25, .125,-.0625
*ANSI37, slanted lines that cross
45, 0,0, 0,.125
135, 0,0, 0,.125
*BRICK, bricks in courses
0, 0,0, 0,.25
90, 0,0, 0,.5, .25,-.25
90, .25,0, 0,.5, -.25,.25
*CROSS, small crosses
0, 0,0, .25,.25, .125,-.375
90, .0625,-.0625, .25,.25, .125,-.375
*DASH, level dashes
0, 0,0, .125,.125, .125,-.125
*DOTS, dots
0, 0,0, .03125,.0625, 0,-.0625
*EARTH, blocks of lines, level and upright in turn
0, 0,0, .25,.25, .25,-.25
0, 0,.09375, .25,.25, .25,-.25
0, 0,.1875, .25,.25, .25,-.25
90, .03125,.21875, .25,.25, .25,-.25
90, .125,.21875, .25,.25, .25,-.25
90, .21875,.21875, .25,.25, .25,-.25
*GRATE, a grate of long narrow meshes
0, 0,0, 0,.03125
90, 0,0, 0,.125
*HEX, hexagons
0, 0,0, 0,.2165064, .125,-.25
120, 0,0, 0,.2165064, .125,-.25
60, .125,0, 0,.2165064, .125,-.25
*LINE, level lines
0, 0,0, 0,.125
*NET, a net of squares
0, 0,0, 0,.125
90, 0,0, 0,.125
*NET3, a net of triangles
0, 0,0, 0,.125
60, 0,0, 0,.125
120, 0,0, 0,.125
*SQUARE, squares in rows, apart
0, 0,0, 0,.125, .125,-.125
90, 0,0, 0,.125, .125,-.125
