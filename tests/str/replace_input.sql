SELECT name FROM sys.objects WHERE type = 'U'
