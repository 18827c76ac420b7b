import java.io.BufferedReader;
import java.io.InputStreamReader;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.sql.Connection;
import java.sql.DriverManager;
import java.sql.Statement;
import java.util.ArrayList;
import java.util.List;
import java.util.function.Function;
import java.util.stream.Collectors;
import org.olap4j.Cell;
import org.olap4j.CellSet;
import org.olap4j.CellSetAxis;
import org.olap4j.OlapConnection;
import org.olap4j.OlapStatement;
import org.olap4j.Position;
import org.olap4j.metadata.Member;
import org.olap4j.metadata.Property;

/**
 * RunStatements SCHEMA TABLES: runs MDX statements on the cube of a schema, in memory, over tables made by a file of
 * SQL. Reads one statement per line, in which \n means a line break. For each, writes lines of tab-separated
 * fields, and an empty line after them:
 *
 * <pre>
 * axis        the members of each position, joined by " * "; one such line for each axis
 * property    its name, then its value at each position of the axis before it
 * values      the cells, row by row: the position on the first axis changes fastest
 * formatted   the same as the engine formats them
 * error       instead of all these: why the statement was rejected
 * </pre>
 */
public class RunStatements {
    private static final PrintStream out = new PrintStream(System.out, false, StandardCharsets.UTF_8);

    public static void main(String[] arguments) throws Exception {
        OlapStatement statement = connect(arguments[0], arguments[1]).createStatement();
        BufferedReader lines = new BufferedReader(new InputStreamReader(System.in, StandardCharsets.UTF_8));
        for (String line; (line = lines.readLine()) != null; ) {
            try {
                print(statement.executeOlapQuery(line.replace("\\n", "\n")));
            } catch (Exception | Error error) {
                print("error", List.of(reason(error))); // the lexer throws an Error
            }
            out.println();
            out.flush();
        }
    }

    private static OlapConnection connect(String schema, String tables) throws Exception {
        String database = "jdbc:hsqldb:mem:sales";
        try (Connection connection = DriverManager.getConnection(database, "sa", "");
             Statement sql = connection.createStatement()) {
            for (String line : Files.readAllLines(Path.of(tables)))
                sql.execute(line);
        }
        return DriverManager.getConnection("jdbc:mondrian:Jdbc=" + database + ";JdbcUser=sa"
            + ";JdbcDrivers=org.hsqldb.jdbc.JDBCDriver;Catalog=file:" + schema).unwrap(OlapConnection.class);
    }

    private static void print(CellSet result) throws Exception {
        int count = 1;
        for (CellSetAxis axis : result.getAxes()) {
            print("axis", each(axis, position -> position.getMembers().stream()
                .map(Member::getUniqueName).collect(Collectors.joining(" * "))));
            for (Property property : axis.getAxisMetaData().getProperties())
                print("property\t" + property.getName(), each(axis, position -> value(position, property)));
            count *= axis.getPositionCount();
        }
        List<String> values = new ArrayList<>();
        List<String> formatted = new ArrayList<>();
        for (int i = 0; i < count; i++) {
            Cell cell = result.getCell(i);
            values.add(cell.isError() ? "error: " + reason((Throwable) cell.getValue()) : text(cell.getValue()));
            formatted.add(cell.isError() ? "error" : cell.getFormattedValue());
        }
        print("values", values);
        print("formatted", formatted);
    }

    private static List<String> each(CellSetAxis axis, Function<Position, String> text) {
        return axis.getPositions().stream().map(text).collect(Collectors.toList());
    }

    private static String value(Position position, Property property) {
        try {
            return text(position.getMembers().get(0).getPropertyValue(property));
        } catch (Exception error) {
            return "error: " + reason(error);
        }
    }

    private static String text(Object value) {
        return value == null ? "" : value.toString();
    }

    private static String reason(Throwable error) {
        while (error.getCause() != null)
            error = error.getCause();
        return String.valueOf(error.getMessage()).replaceAll("\\s+", " ").replace("Mondrian Error:", "");
    }

    private static void print(String kind, List<String> fields) {
        out.println(kind + fields.stream().map(field -> "\t" + field).collect(Collectors.joining()));
    }
}
