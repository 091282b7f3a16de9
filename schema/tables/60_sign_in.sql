-- Passwords and one-time links of the sign-in. No row is ever deleted: a link that was used keeps
-- the mark of its use.

CREATE TABLE Tarlo_Credential (
  User_ID int PRIMARY KEY,
  Hash nvarchar(200),
  ChangedAt datetime
)
GO
-- The token itself is known to the holder of the link only; ExpiresAt is UTC.
CREATE TABLE Tarlo_SignInLink (
  TokenHash nvarchar(64) PRIMARY KEY,
  User_ID int,
  ExpiresAt datetime,
  UsedBy nvarchar(64)
)
GO
