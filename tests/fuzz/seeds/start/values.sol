 X1 1
 unknown 2
! comment
 X3 4 0 BOGUS
