-- What translated statements call on PostgreSQL beside its own functions: how texts are compared and
-- sorted, strict conversions, and texts counted in UTF-16 units. It can be run again at any time.
-- An expression index on tarlo.fold serves equality, so what it gives may only change together with
-- a REINDEX of those.

CREATE SCHEMA IF NOT EXISTS tarlo;

-- Digits, Latin letters, then Chinese by pinyin; case and width do not decide.
CREATE COLLATION IF NOT EXISTS tarlo.chinese
  (provider = icu, locale = 'zh-u-kr-latn-hani-ks-level2', deterministic = false);

-- Ends the statement; of NULL it makes NULL. The message must hold what was given: without a variable
-- part, planning alone would raise it.
CREATE OR REPLACE FUNCTION tarlo.refuse(message text, state text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  RAISE EXCEPTION USING ERRCODE = state, MESSAGE = message;
END $$;

-- Folding, lower and upper from one table of alphabets: capital letters first, first +
-- stride, ... up to last; the small one is delta further. ASCII letters are PostgreSQL's.
DO $install$
DECLARE
  capitals text := '';
  smalls text := '';
  -- Letters that are small and yet another's equal.
  other text := U&'\00B5\017F\03C2\03D0\03D1\03D5\03D6\1E9B\1E9E';
  usual text := U&'\03BC\0073\03C3\03B2\03B8\03C6\03C0\1E61\00DF';
  wide text := U&'\3000\FFE0\FFE1\FFE5';
  narrow text := U&' \00A2\00A3\00A5';
  range record;
  letters constant text :=
    '[\u00B5-\u058F\u1E00-\u1EFF\u2160-\u217F\u24B6-\u24E9\uFF21-\uFF5A\U00010400-\U0001044F]';
BEGIN
  FOR range IN
    SELECT * FROM (VALUES
      (192, 214, 1, 32), (216, 222, 1, 32), (256, 302, 2, 1), (306, 310, 2, 1), (313, 327, 2, 1),
      (330, 374, 2, 1), (376, 376, 1, -121), (377, 381, 2, 1), (461, 475, 2, 1), (478, 494, 2, 1),
      (504, 542, 2, 1), (546, 562, 2, 1), (902, 902, 1, 38), (904, 906, 1, 37), (908, 908, 1, 64),
      (910, 911, 1, 63), (913, 929, 1, 32), (931, 939, 1, 32), (1024, 1039, 1, 80),
      (1040, 1071, 1, 32), (1120, 1152, 2, 1), (1162, 1214, 2, 1), (1216, 1216, 1, 15),
      (1217, 1229, 2, 1), (1232, 1326, 2, 1), (1329, 1366, 1, 48), (7680, 7828, 2, 1),
      (7840, 7934, 2, 1), (8544, 8559, 1, 16), (9398, 9423, 1, 26), (65313, 65338, 1, 32),
      (66560, 66599, 1, 40)) AS alphabet (first, last, stride, delta)
  LOOP
    FOR code IN range.first .. range.last BY range.stride LOOP
      capitals := capitals || chr(code);
      smalls := smalls || chr(code + range.delta);
    END LOOP;
  END LOOP;
  FOR code IN 65281 .. 65374 LOOP
    wide := wide || chr(code);
    narrow := narrow || chr(code - 65248);
  END LOOP;
  FOR code IN 65377 .. 65439 LOOP
    wide := wide || chr(code);
  END LOOP;
  narrow := narrow || '。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノ'
    'ハヒフヘホマミムメモヤユヨラリルレロワン゛゜';
  EXECUTE format($f$
    CREATE OR REPLACE FUNCTION tarlo.fold_letters(x text) RETURNS text
    LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $b$BEGIN RETURN translate(x, %L, %L); END$b$
  $f$, wide || other || capitals, narrow || usual || smalls);
  EXECUTE format($f$
    CREATE OR REPLACE FUNCTION tarlo.fold_width(x text) RETURNS text
    LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $b$BEGIN RETURN translate(x, %L, %L); END$b$
  $f$, wide, narrow);
  EXECUTE format($f$
    CREATE OR REPLACE FUNCTION tarlo.lower(x text) RETURNS text
    LANGUAGE sql IMMUTABLE PARALLEL SAFE
    RETURN lower(CASE WHEN (x COLLATE "C") ~ %1$L THEN translate(x, %2$L, %3$L) ELSE x END
      COLLATE "C")
  $f$, letters, capitals, smalls);
  EXECUTE format($f$
    CREATE OR REPLACE FUNCTION tarlo.upper(x text) RETURNS text
    LANGUAGE sql IMMUTABLE PARALLEL SAFE
    RETURN upper(CASE WHEN (x COLLATE "C") ~ %1$L THEN translate(x, %2$L, %3$L) ELSE x END
      COLLATE "C")
  $f$, letters, smalls, capitals);
END $install$;

-- Most texts are ASCII or Chinese; only the others pay for a translation. The expression is plain, so
-- that PostgreSQL puts it in the place of a call.
CREATE OR REPLACE FUNCTION tarlo.fold_characters(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN lower(CASE
  WHEN octet_length(x) = length(x) THEN x
  WHEN (x COLLATE "C")
    ~ '[\u00B5-\u058F\u1E00-\u1EFF\u2160-\u217F\u24B6-\u24E9\U00010400-\U0001044F]'
    THEN tarlo.fold_letters(x)
  WHEN (x COLLATE "C") ~ '[\u3000\uFF01-\uFFE5]' THEN tarlo.fold_width(x)
  ELSE x END COLLATE "C");

-- Two texts are equal to a statement when these are.
CREATE OR REPLACE FUNCTION tarlo.fold(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN rtrim(tarlo.fold_characters(x));

-- A pattern of LIKE as a regular expression over folded characters. Blanks at the end of a text may
-- be left over, those of the pattern count.
CREATE OR REPLACE FUNCTION tarlo.like_regex(pattern text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  folded constant text := tarlo.fold_characters(pattern);
  size constant int := length(folded);
  regex text := '';
  members text;
  negated boolean;
  character text;
  upto text;
  at int := 1;
  closing int;
BEGIN
  IF size > 8000 THEN
    PERFORM tarlo.refuse('the LIKE pattern is too long: ' || size, '54000');
  END IF;
  WHILE at <= size LOOP
    character := substr(folded, at, 1);
    at := at + 1;
    IF character = '%' THEN
      regex := regex || '.*';
    ELSIF character = '_' THEN
      regex := regex || '.';
    ELSIF character <> '[' THEN
      regex := regex || regexp_replace(character, '([^[:alnum:]_[:space:]])', '\\\1');
    ELSE
      negated := substr(folded, at, 1) = '^';
      IF negated THEN at := at + 1; END IF;
      closing := strpos(substr(folded, at), ']');
      -- A bracket that is never closed takes nothing.
      IF closing = 0 THEN RETURN '(?!)'; END IF;
      closing := closing + at - 1;
      members := '';
      WHILE at < closing LOOP
        character := substr(folded, at, 1);
        upto := character;
        IF at + 2 < closing AND substr(folded, at + 1, 1) = '-' THEN
          upto := substr(folded, at + 2, 1);
          at := at + 2;
        END IF;
        at := at + 1;
        IF ascii(character) <= ascii(upto) THEN
          members := members || regexp_replace(character, '([^[:alnum:]_[:space:]])', '\\\1');
          IF upto <> character THEN
            members := members || '-' || regexp_replace(upto, '([^[:alnum:]_[:space:]])', '\\\1');
          END IF;
        END IF;
      END LOOP;
      at := closing + 1;
      IF members <> '' THEN
        regex := regex || CASE WHEN negated THEN '[^' ELSE '[' END || members || ']';
      ELSE
        regex := regex || CASE WHEN negated THEN '.' ELSE '(?!)' END;
      END IF;
    END IF;
  END LOOP;
  RETURN CASE WHEN regex LIKE '.*%' THEN substr(regex, 3) ELSE '^' || regex END
    || CASE WHEN right(folded, 1) = '%' THEN '' ELSE ' *$' END;
END $$;

-- Conversions of texts are strict: nothing but blanks may stand round a value, and '' is 0.
CREATE OR REPLACE FUNCTION tarlo.integer_of(x text) RETURNS int8
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
  WHEN btrim(x) = '' THEN 0
  WHEN (x COLLATE "C") ~ '^ *[+-]?[0-9]+ *$' THEN x::int8
  ELSE tarlo.refuse('conversion failed: ''' || left(x, 60) || ''' is not an integer', '22018')::int8
END;

CREATE OR REPLACE FUNCTION tarlo.decimal_of(x text) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
  WHEN btrim(x) = '' THEN 0
  WHEN (x COLLATE "C") ~ '^ *[+-]?([0-9]+[.]?[0-9]*|[.][0-9]+) *$' THEN x::numeric
  ELSE tarlo.refuse('conversion failed: ''' || left(x, 60) || ''' is not a decimal', '22018')::numeric
END;

CREATE OR REPLACE FUNCTION tarlo.float_of(x text) RETURNS float8
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
  WHEN btrim(x) = '' THEN 0
  WHEN (x COLLATE "C") ~ '^ *[+-]?([0-9]+[.]?[0-9]*|[.][0-9]+)([eE][+-]?[0-9]+)? *$' THEN x::float8
  ELSE tarlo.refuse('conversion failed: ''' || left(x, 60) || ''' is not a number', '22018')::float8
END;

CREATE OR REPLACE FUNCTION tarlo.is_numeric(x text) RETURNS int4
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN coalesce(((x COLLATE "C") ~ '^ *[+-]?([0-9]+[.]?[0-9]*|[.][0-9]+)([eE][+-]?[0-9]+)? *$')::int4, 0);

CREATE OR REPLACE FUNCTION tarlo.byte_of(x int8) RETURNS int4
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN x NOT BETWEEN 0 AND 255
  THEN tarlo.refuse('arithmetic overflow: ' || x || ' is too large for the integer type', '22003')::int4
  ELSE x::int4 END;

-- Dates lie in the years 1753 to 9999.
CREATE OR REPLACE FUNCTION tarlo.in_range(x timestamp) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN x NOT BETWEEN '1753-01-01' AND '9999-12-31 23:59:59.999'
  THEN tarlo.refuse('the date ' || extract(year from x) || ' is outside of the years 1753 to 9999',
    '22008')::timestamp
  ELSE x END;

CREATE OR REPLACE FUNCTION tarlo.date_of(x text) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  part text[];
BEGIN
  IF btrim(x) = '' THEN RETURN '1900-01-01'; END IF;
  part := regexp_match(btrim(x) COLLATE "C", '^(?:([0-9]{4})(?:([-/.])([0-9]{1,2})([-/.])([0-9]{1,2})'
    || '|([0-9]{2})([0-9]{2})))?'
    || '(?:(T| *)([0-9]{1,2}):([0-9]{1,2})(?::([0-9]{1,2})(?:[.]([0-9]{1,3}))?)?)?$');
  IF part IS NULL OR part[2] <> part[4] OR (part[1] IS NULL) <> (coalesce(part[8], ' ') = '')
      OR part[1]::int < 1753 OR part[9]::int > 23 OR part[11]::int > 59 THEN
    PERFORM tarlo.refuse('conversion failed: ''' || left(x, 60) || ''' is not a date', '22018');
  END IF;
  RETURN make_timestamp(coalesce(part[1], '1900')::int, coalesce(part[3], part[6], '1')::int,
    coalesce(part[5], part[7], '1')::int, coalesce(part[9], '0')::int, coalesce(part[10], '0')::int,
    (coalesce(part[11], '0') || '.' || coalesce(part[12], '0'))::float8);
END $$;

-- A number counts days from 1900-01-01.
CREATE OR REPLACE FUNCTION tarlo.date_of_days(days float8) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN abs(days) < 4000000
  THEN tarlo.in_range((timestamp '1900-01-01' + days * interval '1 day')::timestamp(3))
  ELSE tarlo.refuse('the date is out of range: ' || days, '22008')::timestamp END;

CREATE OR REPLACE FUNCTION tarlo.days_of_date(x timestamp) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN extract(epoch from x - timestamp '1900-01-01') / 86400;

-- Weeks begin on Sunday; the week of 1 January is the first.
CREATE OR REPLACE FUNCTION tarlo.week(x timestamp) RETURNS int4
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN (extract(doy from x)::int4 + extract(dow from date_trunc('year', x))::int4 - 1) / 7 + 1;

CREATE OR REPLACE FUNCTION tarlo.months(x timestamp) RETURNS int4
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN extract(year from x)::int4 * 12 + extract(month from x)::int4 - 1;

-- Jan  5 2024 10:11AM
CREATE OR REPLACE FUNCTION tarlo.long_date(x timestamp) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE
RETURN to_char(x, 'Mon ') || lpad(to_char(x, 'FMDD'), 2) || to_char(x, ' YYYY ')
  || lpad(to_char(x, 'FMHH12'), 2) || to_char(x, ':MIAM');

-- Six digits; an exponent has three.
CREATE OR REPLACE FUNCTION tarlo.float_text(x float8) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  part constant text[] := regexp_match(to_char(x, '9.99999EEEE'), '^ ?(-?[0-9.]+)e([+-])([0-9]+)$');
  exponent int;
BEGIN
  IF x = 0 THEN RETURN '0'; END IF;
  exponent := (part[2] || part[3])::int;
  IF exponent BETWEEN -4 AND 5 THEN
    RETURN trim_scale((part[1] || 'e' || exponent)::numeric)::text;
  END IF;
  RETURN trim_scale(part[1]::numeric)::text || 'e' || part[2] || lpad(abs(exponent)::text, 3, '0');
END $$;

-- On the digits that people see: 0.3 % 0.1 is 0.
CREATE OR REPLACE FUNCTION tarlo.float_remainder(x float8, divisor float8) RETURNS float8
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN mod(x::numeric, divisor::numeric)::float8;

-- Right-aligned; asterisks when the whole part does not fit, fewer places when only they do not.
CREATE OR REPLACE FUNCTION tarlo.str(x float8, size int4, wanted int4) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  places int := least(wanted, 16);
  digits text;
BEGIN
  IF size < 0 OR size > 8000 OR wanted < 0 THEN RETURN NULL; END IF;
  LOOP
    digits := round(x::numeric, places)::text;
    EXIT WHEN length(digits) <= size OR places = 0;
    places := places - 1;
  END LOOP;
  RETURN CASE WHEN length(digits) > size THEN repeat('*', size) ELSE lpad(digits, size) END;
END $$;

-- A number's text that does not fit is "*" where `marks` says so, else an error; digits are never cut.
CREATE OR REPLACE FUNCTION tarlo.narrow(digits text, size int4, marks boolean) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
  WHEN length(digits) <= size THEN digits
  WHEN marks AND digits IS NOT NULL THEN '*'
  ELSE tarlo.refuse('arithmetic overflow: ' || digits || ' is longer than the text', '22003')
END;

-- Positions and lengths count UTF-16 units; what PostgreSQL counts differs in characters beyond
-- U+FFFF only, which are rare. Of those that a cut would halve, nothing is left.
CREATE OR REPLACE FUNCTION tarlo.units(x text) RETURNS int4
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN length(x) + CASE WHEN (x COLLATE "C") ~ '[\U00010000-\U0010FFFF]'
  THEN length(regexp_replace(x COLLATE "C", '[^\U00010000-\U0010FFFF]', '', 'g')) ELSE 0 END;

CREATE OR REPLACE FUNCTION tarlo.len(x text) RETURNS int4
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN tarlo.units(rtrim(x));

-- With a character of no meaning behind each of two units.
CREATE OR REPLACE FUNCTION tarlo.widened(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN regexp_replace(x COLLATE "C", '([\U00010000-\U0010FFFF])', '\1' || chr(65535), 'g');

-- The units from `first` up to `past`, which does not belong to them.
CREATE OR REPLACE FUNCTION tarlo.slice(x text, first int8, past int8) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  start constant int := least(greatest(first, 1), 1000000000);
  size constant int := least(greatest(past - start, 0), 1000000000);
BEGIN
  IF (x COLLATE "C") !~ '[\U00010000-\U0010FFFF]' THEN RETURN substr(x, start, size); END IF;
  RETURN replace(regexp_replace(substr(tarlo.widened(x), start, size) COLLATE "C",
    '[\U00010000-\U0010FFFF]$', ''), chr(65535), '');
END $$;

CREATE OR REPLACE FUNCTION tarlo.cut_length(size int4, name text) RETURNS int4
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN size < 0
  THEN tarlo.refuse('negative length for ' || name || ': ' || size, '22011')::int4 ELSE size END;

-- A start below 1 uses up length: SUBSTRING('abc', 0, 2) is 'a'.
CREATE OR REPLACE FUNCTION tarlo.substring(x text, start int4, size int4) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN tarlo.slice(x, start, start::int8 + tarlo.cut_length(size, 'SUBSTRING'));

CREATE OR REPLACE FUNCTION tarlo.left(x text, size int4) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN tarlo.slice(x, 1, 1::int8 + tarlo.cut_length(size, 'LEFT'));

CREATE OR REPLACE FUNCTION tarlo.right(x text, size int4) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN tarlo.slice(x, tarlo.units(x) - tarlo.cut_length(size, 'RIGHT')::int8 + 1, 2000000000);

CREATE OR REPLACE FUNCTION tarlo.pad(x text, size int4) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN tarlo.left(x, size) || repeat(' ', size - tarlo.units(tarlo.left(x, size)));

CREATE OR REPLACE FUNCTION tarlo.stuff(x text, start int4, size int4, y text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN start >= 1 AND start <= tarlo.units(x) AND size >= 0
  THEN tarlo.slice(x, 1, start) || y || tarlo.slice(x, start::int8 + size, 2000000000) END;

-- A result beyond what a text without MAX holds is cut there.
CREATE OR REPLACE FUNCTION tarlo.replicate(x text, times int4) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN times >= 0
  THEN tarlo.left(repeat(x, least(times, 8000 / greatest(length(x), 1) + 1)), 8000) END;

CREATE OR REPLACE FUNCTION tarlo.char_index(wanted text, x text, first int4) RETURNS int4
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  start constant int := greatest(first, 1);
  place constant int := strpos(substr(tarlo.widened(tarlo.fold_characters(x)), start) COLLATE "C",
    tarlo.widened(tarlo.fold_characters(wanted)));
BEGIN
  RETURN CASE WHEN place = 0 OR wanted = '' THEN 0 ELSE place + start - 1 END;
END $$;

CREATE OR REPLACE FUNCTION tarlo.replace(x text, wanted text, instead text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  part constant text := tarlo.fold_characters(wanted);
  rest text := tarlo.fold_characters(x);
  done int := 0;
  result text := '';
  place int;
BEGIN
  IF part = '' THEN RETURN x; END IF;
  LOOP
    place := strpos(rest COLLATE "C", part);
    EXIT WHEN place = 0;
    result := result || substr(x, done + 1, place - 1) || instead;
    IF octet_length(result) > 2000000 THEN
      PERFORM tarlo.refuse('REPLACE makes too long a text: ' || octet_length(result), '54000');
    END IF;
    done := done + place + length(part) - 1;
    rest := substr(rest, place + length(part));
  END LOOP;
  RETURN result || substr(x, done + 1);
END $$;

-- Before rows with identities of their own are stored: the table's numbers go on behind the greatest.
CREATE OR REPLACE FUNCTION tarlo.reserve_identity(tab text, col text, greatest_stored int8) RETURNS int8
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
  sequence constant text := pg_get_serial_sequence(quote_ident(tab), col);
  last int8;
BEGIN
  IF sequence IS NULL THEN RETURN NULL; END IF;
  EXECUTE 'SELECT last_value FROM ' || sequence INTO last;
  RETURN CASE WHEN greatest_stored > last THEN setval(sequence, greatest_stored) ELSE last END;
END $$;
