-- What the server keeps for itself about the database: which version of the tables it holds, and how
-- old the rows are of tables that hold no date.

-- A row for each version that was written, by init or by an upgrade. The highest one holds.
CREATE TABLE Tarlo_Schema (
  Version int PRIMARY KEY,
  WrittenAt datetime,
  WrittenBy nvarchar(100)
)
GO
-- The rows of the table with numbers up to LastID were there at NotedAt (UTC).
CREATE TABLE Tarlo_AgeMark (
  TableName nvarchar(128),
  LastID int,
  NotedAt datetime
)
GO
