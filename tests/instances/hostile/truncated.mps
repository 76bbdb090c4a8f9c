NAME          HOSTILE
ROWS
 N  COST
 L  LIM1
 G  LIM2
 E  MYEQN
COLUMNS
    X1        COST               1.0   LIM1               1.0
    X1        LIM2               1.0
    X2        COST               2.0   LIM1               1.0
    X2        COST 