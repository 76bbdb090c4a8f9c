* Columns with bounds and no rows: min x - 2y + 3z, x in [1, 4], y in [-2, 5], z free above 0.
* Each column sits at the bound its cost points to: x = 1, y = 5, z = 0, objective -9.
NAME          BOUNDSONLY
ROWS
 N  COST
COLUMNS
    X         COST               1.0
    Y         COST              -2.0
    Z         COST               3.0
RHS
BOUNDS
 LO BND       X                  1.0
 UP BND       X                  4.0
 LO BND       Y                 -2.0
 UP BND       Y                  5.0
ENDATA
