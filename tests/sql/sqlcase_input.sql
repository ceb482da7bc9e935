SELECT Name, N'Keep Me' FROM [My Table] -- Keep THIS
/* Outer /* Inner */ STILL */ WHERE "Col" = 'X'
