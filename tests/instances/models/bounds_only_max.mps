* The same columns, maximized, with an objective constant from the objective row's RHS:
* max x - 2y + 3z + 2.5 with z <= 7: x = 4, y = -2, z = 7, objective 4 + 4 + 21 + 2.5 = 31.5.
NAME          BOUNDSMAX
OBJSENSE
    MAX
ROWS
 N  COST
COLUMNS
    X         COST               1.0
    Y         COST              -2.0
    Z         COST               3.0
RHS
    RHS       COST              -2.5
BOUNDS
 LO BND       X                  1.0
 UP BND       X                  4.0
 LO BND       Y                 -2.0
 UP BND       Y                  5.0
 UP BND       Z                  7.0
ENDATA
