* nothing but a comment

*another
