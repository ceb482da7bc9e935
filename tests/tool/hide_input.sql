SELECT N'it''s', "Col" -- FROM here
/* a /* b */ FROM */ FROM [My Table] WHERE x = 'a--b'
