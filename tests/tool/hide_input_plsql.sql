REM it's SQL*Plus
SELECT q'[it's]', "Name" FROM dual;
/
SELECT 'open
