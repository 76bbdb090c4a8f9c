* A free column with a cost and no rows: the model is unbounded.
NAME          UNBCOL
ROWS
 N  COST
COLUMNS
    X         COST               1.0
RHS
BOUNDS
 FR BND       X
ENDATA
