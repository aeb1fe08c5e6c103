# cmake -DLIBRARIES=<tessel-libraries> -DSAMPLES=<tessel_samples> -DFOLDER=<program folder> -P make.cmake
# Makes the sample files in that folder: ration libraries, then the bill library that names their rations.

cmake_minimum_required(VERSION 3.25)
set(sources "${CMAKE_CURRENT_LIST_DIR}/sources")
set(bill_library "建设工程清单2013.bdb")
set(ENV{TESSEL_HOME} "${FOLDER}")

function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# rations(<folder of the CSV files> <id> <option of tessel-libraries>…)
function(rations folder id)
    run("${LIBRARIES}" make ${id} --chapters "${sources}/rations/${folder}/chapters.csv"
        --rations "${sources}/rations/${folder}/rations.csv" ${ARGN})
endfunction()

file(REMOVE "${FOLDER}/tessel.dat")
# The first ten characters of an id and the two leading digits of a bill code are the id of the library that a new
# ration of that bill starts with; the ids are chosen to suit. For 05 there is no library on purpose. That of another
# region than 广东省 is found by the editor but not by the browser.
rations(guangdong-building GD2018ZHDE01 --name 广东建筑与装饰工程定额（示例） --file 广东建筑与装饰工程定额.db
    --region 广东省 --profession 01 --default-for ${bill_library})
rations(guangdong-installation GD2018ZHDE03 --name 广东通用安装工程定额（示例） --file 广东通用安装工程定额.db
    --region 广东省 --profession 03)
rations(guangdong-municipal GD2018ZHDE04 --name 广东市政工程定额（示例） --file 广东市政工程定额.db
    --region 广东省 --profession 04)
rations(hunan-building HN2020XHBZ01 --name 湖南建筑工程消耗量标准（示例） --file 湖南建筑工程消耗量标准.db
    --region 湖南省 --profession 01)
run("${SAMPLES}" "${sources}" "${FOLDER}/Data/${bill_library}")
