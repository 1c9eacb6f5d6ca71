;; Hatch patterns, lengths in millimetres on paper. Below a name stand families of parallel lines:
;; angle, point of the first line (x, y), step to the next line (along it, across it), then dashes
;; (positive), gaps (negative) and dots (0); without any the lines are unbroken.
*SOLID, filled whole
45, 0,0, 0,3.175
*ANGLE, corners in rows
0, 0,0, 0,6.985, 5.08,-1.905
90, 0,0, 0,6.985, 5.08,-1.905
*ANSI31, slanted lines
45, 0,0, 0,3.175
*ANSI32, slanted lines in pairs
45, 0,0, 0,9.525
45, 4.4901282,0, 0,9.525
*ANSI33, slanted lines, every other one broken
45, 0,0, 0,6.35
45, 4.4901282,0, 0,6.35, 3.175,-1.5875
*ANSI37, slanted lines that cross
45, 0,0, 0,3.175
135, 0,0, 0,3.175
*BRICK, bricks in courses
0, 0,0, 0,6.35
90, 0,0, 0,12.7, 6.35,-6.35
90, 6.35,0, 0,12.7, -6.35,6.35
*CROSS, small crosses
0, 0,0, 6.35,6.35, 3.175,-9.525
90, 1.5875,-1.5875, 6.35,6.35, 3.175,-9.525
*DASH, level dashes
0, 0,0, 3.175,3.175, 3.175,-3.175
*DOTS, dots
0, 0,0, .79375,1.5875, 0,-1.5875
*EARTH, blocks of lines, level and upright in turn
0, 0,0, 6.35,6.35, 6.35,-6.35
0, 0,2.38125, 6.35,6.35, 6.35,-6.35
0, 0,4.7625, 6.35,6.35, 6.35,-6.35
90, .79375,5.55625, 6.35,6.35, 6.35,-6.35
90, 3.175,5.55625, 6.35,6.35, 6.35,-6.35
90, 5.55625,5.55625, 6.35,6.35, 6.35,-6.35
*GRATE, a grate of long narrow meshes
0, 0,0, 0,.79375
90, 0,0, 0,3.175
*HEX, hexagons
0, 0,0, 0,5.4992626, 3.175,-6.35
120, 0,0, 0,5.4992626, 3.175,-6.35
60, 3.175,0, 0,5.4992626, 3.175,-6.35
*LINE, level lines
0, 0,0, 0,3.175
*NET, a net of squares
0, 0,0, 0,3.175
90, 0,0, 0,3.175
*NET3, a net of triangles
0, 0,0, 0,3.175
60, 0,0, 0,3.175
120, 0,0, 0,3.175
*SQUARE, squares in rows, apart
0, 0,0, 0,3.175, 3.175,-3.175
90, 0,0, 0,3.175, 3.175,-3.175
